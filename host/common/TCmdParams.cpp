#include "host/common/TCmdParams.h"

#include <optional>

#include "host/base/Exception.h"

namespace kk {

namespace {

bool IsBlank(char16_t iChar) { return iChar <= u' '; }

// The arguments of a line, one after the other.
class TArguments {
 public:
  struct TArgument {
    TString Text;
    bool IsQuoted = false;
  };

  explicit TArguments(TStringView iLine) : FRest(iLine) {}

  std::optional<TArgument> Next() {
    while (!FRest.empty() && IsBlank(FRest.front())) FRest.remove_prefix(1);
    if (FRest.empty()) return {};
    TArgument argument;
    argument.IsQuoted = FRest.front() == u'"';
    while (!FRest.empty() && !IsBlank(FRest.front())) {
      const char16_t next = Take();
      if (next == u'"') {
        TakeQuoted(argument.Text);
      } else {
        argument.Text += next;
      }
    }
    return argument;
  }

 private:
  char16_t Take() {
    const char16_t next = FRest.front();
    FRest.remove_prefix(1);
    return next;
  }
  bool Follows(char16_t iChar) const { return !FRest.empty() && FRest.front() == iChar; }

  // Up to the closing quote, which is taken, too.
  void TakeQuoted(TString& ioText) {
    while (!FRest.empty()) {
      const char16_t next = Take();
      const bool escape = next == u'\\' && (Follows(u'"') || Follows(u'\\'));
      const bool doubled = next == u'"' && Follows(u'"');
      if (next == u'"' && !doubled) return;
      ioText += escape || doubled ? Take() : next;
    }
  }

  TStringView FRest;
};

bool IsPlain(TStringView iArgument) {
  for (const char16_t c : iArgument) {
    if (IsBlank(c) || c == u'"') return false;
  }
  return !iArgument.empty();
}

TString InQuotes(TStringView iArgument) {
  TString text = u"\"";
  for (const char16_t c : iArgument) {
    if (c == u'"' || c == u'\\') text += u'\\';
    text += c;
  }
  return text + u"\"";
}

}  // namespace

TCmdParams::TCmdParams(TStringView iLine) {
  TArguments arguments(iLine);
  bool first = true;
  while (const auto argument = arguments.Next()) {
    const TString& text = argument->Text;
    if (!argument->IsQuoted && text.size() > 1 && text[0] == u'-') {
      FParams.push_back({text, {}});
      first = true;
    } else if (!FParams.empty()) {
      TString& value = FParams.back().Value;
      if (!first) value += u' ';
      value += text;
      first = false;
    }
  }
}

const TString& TCmdParams::GetName(int iIndex) const {
  return FParams[CheckedIndex(iIndex, FParams.size())].Name;
}

const TString& TCmdParams::GetValue(int iIndex) const {
  return FParams[CheckedIndex(iIndex, FParams.size())].Value;
}

TString TCmdParams::Quote(TStringView iArgument) {
  const bool isName = StartsWith(iArgument, u"-");
  return IsPlain(iArgument) && !isName ? TString(iArgument) : InQuotes(iArgument);
}

TString TCmdParams::Join(const std::vector<TString>& iArguments) {
  TString line;
  for (const TString& argument : iArguments) {
    if (!line.empty()) line += u' ';
    line += IsPlain(argument) ? argument : InQuotes(argument);
  }
  return line;
}

}  // namespace kk
