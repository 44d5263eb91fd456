#pragma once

#include <rapidcheck.h>

#include <algorithm>
#include <string>
#include <vector>

#include "model/TLstWatchlistCategory.h"
#include "tests/support/TFakeSource.h"

// Trees of any shape with texts of any characters, for properties; no two articles are the same.
namespace kk {

// What XML 1.0 (production 2) can hold of a text.
inline TString Storable(const TString& iText) {
  TString kept;
  for (size_t i = 0; i < iText.size(); ++i) {
    const char16_t unit = iText[i];
    const bool high = unit >= 0xD800 && unit <= 0xDBFF;
    const bool pair =
        high && i + 1 < iText.size() && iText[i + 1] >= 0xDC00 && iText[i + 1] <= 0xDFFF;
    if (pair) {
      kept += unit;
      kept += iText[++i];
    } else if (unit == u'\t' || unit == u'\r' || unit == u'\n' || (unit >= 0x20 && unit < 0xD800) ||
               (unit >= 0xE000 && unit <= 0xFFFD)) {
      kept += unit;
    }
  }
  return kept;
}

// Lines are stored as one text: no lines and one empty line are the same.
inline std::vector<TString> StorableLines(const TStringList& iLines) {
  std::vector<TString> lines;
  for (const TString& line : iLines.Lines()) lines.push_back(Storable(line));
  if (lines.size() == 1 && lines[0].empty()) lines.clear();
  return lines;
}
inline std::vector<TString> StorableNote(const TStringList& iLines) {
  return Trim(iLines.GetText()).empty() ? std::vector<TString>() : StorableLines(iLines);
}

inline rc::Gen<TString> AnyText() {
  const std::vector<TString> pieces = {u"a",
                                       u"Ä",
                                       u" ",
                                       u"\t",
                                       u"\n",
                                       u"\r",
                                       u"\r\n",
                                       u"]]>",
                                       u"<",
                                       u"&amp;",
                                       u"&#0;",
                                       u"\"'",
                                       u"😀",
                                       u"<!--",
                                       u"-->",
                                       u"<![CDATA[",
                                       u"\u0001",
                                       u"\u007F",
                                       u"\u0085",
                                       u"\u2028",
                                       u"\uFEFF",
                                       u"\uFFFE",
                                       u"=",
                                       u"%s",
                                       TString(1, char16_t(0xD83D)),
                                       TString(1, char16_t(0xDE00)),
                                       TString(1, u'\0'),
                                       u"</Name>"};
  return rc::gen::map(
      rc::gen::container<std::vector<TString>>(rc::gen::oneOf(
          rc::gen::elementOf(pieces),
          rc::gen::map(rc::gen::inRange(0, 0x10000),
                       [](int unit) { return TString(1, static_cast<char16_t>(unit)); }))),
      [](const std::vector<TString>& parts) {
        TString text;
        for (const TString& part : parts) text += part;
        std::erase(text, u'|');
        return text;
      });
}

inline void FillLines(TStringList& ioLines) {
  ioLines.Assign(*rc::gen::resize(4, rc::gen::container<std::vector<TString>>(AnyText())));
}

// One line for each thing of a tree, whole; the order of each group as it is or turned round.
inline void Describe(const TLstWatchlistCategory& iTree, bool iAsStored,
                     std::vector<std::string>& ioText) {
  const auto quoted = [](const std::vector<TString>& iLines) {
    std::string text;
    for (const TString& line : iLines) text += " \"" + ToUtf8(line) + "\"";
    return text;
  };
  for (const TWatchlistCategory* category : iTree) {
    const auto lines =
        iAsStored ? StorableLines(category->Description()) : category->Description().Lines();
    ioText.push_back("category " + ToUtf8(GUIDToString(category->Id())) +
                     quoted({iAsStored ? Storable(category->Name()) : category->Name()}) +
                     (category->Expanded() ? " +" : " -") + quoted(lines));
    for (const TWatchlistPlugin* group : category->LstPlugin()) {
      ioText.push_back("group " + ToUtf8(group->GetName()));
      const auto start = static_cast<ptrdiff_t>(ioText.size());
      for (const TWatchlistItem* item : group->LstItem()) {
        const auto note =
            iAsStored ? StorableNote(item->Description()) : item->Description().Lines();
        ioText.push_back("item " + ToUtf8(item->GetName()) + " " +
                         ToUtf8(GUIDToString(item->SearchResultId())) + " " +
                         ToUtf8(GUIDToString(item->ParentCategoryId())) + " " +
                         std::to_string(item->LastUpdateDate().Ms()) + quoted(note));
      }
      if (iAsStored) std::reverse(ioText.begin() + start, ioText.end());
    }
    ioText.emplace_back("children");
    Describe(category->LstCategory(), iAsStored, ioText);
    ioText.emplace_back("end");
  }
}

inline void FillGroups(TWatchlistCategory& ioCategory,
                       const std::vector<TIntf<TFakeSource>>& iSources) {
  static int article = 0;
  for (const auto& source : iSources) {
    for (int count = *rc::gen::inRange(0, 4); count > 0; --count) {
      TWatchlistItem& item = ioCategory.LstPlugin().FindOrAdd(source).LstItem().Add(
          std::make_unique<TWatchlistItem>());
      item.SetParentCategoryId(ioCategory.Id());
      item.SetSearchResult(FakeResult(u"Artikel " + IntToStr(++article)));
      FillLines(item.Description());
      item.SetLastUpdateDate(TDateTime::FromMs(*rc::gen::inRange<int64_t>(0, 4'000'000'000'000)));
    }
  }
}

inline void FillTree(TLstWatchlistCategory& ioTree, const std::vector<TIntf<TFakeSource>>& iSources,
                     int iDepth, int iAtLeast = 0) {
  for (int count = *rc::gen::inRange(iAtLeast, 4); count > 0; --count) {
    TWatchlistCategory& category = ioTree.Add(std::make_unique<TWatchlistCategory>());
    category.SetId(NewGuid());
    category.SetName(*AnyText());
    FillLines(category.Description());
    category.SetExpanded(*rc::gen::arbitrary<bool>());
    FillGroups(category, iSources);
    if (iDepth > 1) FillTree(category.LstCategory(), iSources, iDepth - 1);
  }
}

}  // namespace kk
