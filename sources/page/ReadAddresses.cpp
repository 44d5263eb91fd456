#include "sources/page/ReadAddresses.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace kk {

namespace {

constexpr TStringView cBlanks = u" \t\u00A0";
constexpr TStringView cBefore = u"<([{\"'„“”‚‘»«";
constexpr TStringView cBehind = u">)]}\"'“”‘’«»,;.!";

bool Contains(TStringView iSet, char16_t iChar) { return iSet.find(iChar) != TStringView::npos; }

TString Lower(TStringView iText) {
  TString text(iText);
  std::transform(text.begin(), text.end(), text.begin(), AsciiLower);
  return text;
}

std::vector<TStringView> WordsOf(TStringView iLine) {
  std::vector<TStringView> words;
  while (true) {
    const size_t begin = iLine.find_first_not_of(cBlanks);
    if (begin == TStringView::npos) return words;
    iLine.remove_prefix(begin);
    const size_t end = std::min(iLine.find_first_of(cBlanks), iLine.size());
    words.push_back(iLine.substr(0, end));
    iLine.remove_prefix(end);
  }
}

// A closing bracket stays where its opening one stands in the address.
TStringView WithoutBrackets(TStringView iWord) {
  while (!iWord.empty() && Contains(cBefore, iWord.front())) iWord.remove_prefix(1);
  while (!iWord.empty() && Contains(cBehind, iWord.back())) {
    if (iWord.back() == u')' && Contains(iWord, u'(')) break;
    iWord.remove_suffix(1);
  }
  return iWord;
}

// From the scheme on; empty if there is none.
TStringView FromScheme(TStringView iWord) {
  const TString lower = Lower(iWord);
  const size_t begin = std::min(lower.find(u"http://"), lower.find(u"https://"));
  return begin == TString::npos ? TStringView() : WithoutBrackets(iWord.substr(begin));
}

bool IsHostChar(char16_t c) { return c == u'-' || c >= 0x80 || u_isalnum(c) != 0; }

// "shop.de", "shop.de:8080/p"; the last label of a name has two letters at least.
bool LooksLikeHost(TStringView iHost) {
  const std::vector<TString> labels = Split(iHost, u'.');
  if (labels.size() < 2) return false;
  for (const TString& label : labels) {
    if (label.empty() || !std::all_of(label.begin(), label.end(), IsHostChar)) return false;
  }
  const TString& last = labels.back();
  return last.size() >= 2 &&
         std::none_of(last.begin(), last.end(), [](char16_t c) { return c >= u'0' && c <= u'9'; });
}

bool LooksLikeNumbers(TStringView iHost) {
  return std::count(iHost.begin(), iHost.end(), u'.') == 3 &&
         iHost.find_first_not_of(u"0123456789.") == TStringView::npos;
}

bool IsPort(TStringView iText) {
  return iText.empty() || (iText.size() > 1 && iText.front() == u':' &&
                           iText.find_first_not_of(u"0123456789", 1) == TStringView::npos);
}

// The address with the scheme that it lacks; empty for what is none.
TString WithScheme(TStringView iWord) {
  const TStringView authority = iWord.substr(0, iWord.find_first_of(u"/?#"));
  const TStringView host = authority.substr(0, authority.find(u':'));
  if (!IsPort(authority.substr(host.size()))) return {};
  if (SameText(host, u"localhost") || LooksLikeNumbers(host)) return u"http://" + TString(iWord);
  return LooksLikeHost(host) ? u"https://" + TString(iWord) : TString();
}

// Among other words a name alone may be anything.
bool IsMeantAsAddress(TStringView iWord) {
  return StartsWith(Lower(iWord), u"www.") || Contains(iWord, u'/');
}

class TReader {
 public:
  void Read(TStringView iLine) {
    TEntry entry;
    entry.Line.Text = Trim(WithoutControlCharacters(ReplaceAll(iLine, u"\t", u" ")));
    if (entry.Line.Text.empty() || entry.Line.Text.front() == u'#') return;
    const std::vector<TStringView> words = WordsOf(entry.Line.Text);
    for (const TStringView word : words) Add(entry, FromScheme(word));
    entry.HasScheme = entry.WasFound;
    for (size_t i = 0; i < words.size() && !entry.HasScheme; ++i) {
      const TStringView word = WithoutBrackets(words[i]);
      if (words.size() == 1 || IsMeantAsAddress(word)) Add(entry, WithScheme(word));
    }
    FEntries.push_back(std::move(entry));
  }

  std::vector<TAddressLine> TakeLines() {
    // Where an address stands first, titles stand below, else above.
    const bool below = !FEntries.empty() && FEntries[0].HasScheme;
    const bool isPairs = IsPairs();
    for (size_t i = 0; i < FEntries.size(); ++i) {
      // In a list that is typed a single word is rather an address gone wrong.
      const bool hasWords = Contains(FEntries[i].Line.Text, u' ');
      if (!CanBeTitle(FEntries[i]) || (!isPairs && !hasWords)) continue;
      FEntries[i].IsTitle = TakesTitle(below ? i - 1 : i + 1) || TakesTitle(below ? i + 1 : i - 1);
    }
    std::vector<TAddressLine> lines;
    for (TEntry& entry : FEntries) {
      const bool saysNothing = entry.IsTitle || (entry.WasFound && entry.Line.Addresses.empty());
      if (!saysNothing) lines.push_back(std::move(entry.Line));
    }
    return lines;
  }

 private:
  struct TEntry {
    TAddressLine Line;
    bool WasFound = false;  // an address, though perhaps one of an earlier line
    bool HasScheme = false;
    bool HasTitle = false;
    bool IsTitle = false;
  };

  void Add(TEntry& ioEntry, TStringView iWord) {
    if (iWord.empty()) return;
    auto address = TPageAddress::Parse(ToUtf8(iWord));
    if (!address) return;
    ioEntry.WasFound = true;
    if (FKnown.insert(address->Key()).second) ioEntry.Line.Addresses.push_back(std::move(*address));
  }

  static bool CanBeTitle(const TEntry& iEntry) {
    return !iEntry.WasFound && iEntry.Line.Text.find(u"://") == TString::npos;
  }

  // Titles and addresses in turns, as browsers give what is dropped.
  bool IsPairs() const {
    for (size_t i = 0; i < FEntries.size(); ++i) {
      const TEntry& partner = FEntries[std::min(i ^ 1, FEntries.size() - 1)];
      if (FEntries[i].HasScheme == partner.HasScheme) return false;
      if (!FEntries[i].HasScheme && !CanBeTitle(FEntries[i])) return false;
    }
    return true;
  }

  // An index before the first one is beyond the last one, too.
  bool TakesTitle(size_t iIndex) {
    if (iIndex >= FEntries.size()) return false;
    TEntry& entry = FEntries[iIndex];
    return entry.HasScheme && !std::exchange(entry.HasTitle, true);
  }

  std::vector<TEntry> FEntries;
  std::unordered_set<std::string> FKnown;
};

}  // namespace

std::vector<TAddressLine> ReadAddresses(TStringView iText) {
  TReader reader;
  while (!iText.empty()) {
    const size_t end = std::min(iText.find_first_of(u"\r\n\u2028"), iText.size());
    reader.Read(iText.substr(0, end));
    iText.remove_prefix(std::min(end + 1, iText.size()));
  }
  return reader.TakeLines();
}

}  // namespace kk
