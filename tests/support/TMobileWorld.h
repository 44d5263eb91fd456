#pragma once

#include "tests/support/TFakeSource.h"

namespace kk {

/// A source that takes part in the mobile exchange: its results travel as a name, and their end as
/// the offer's date.
class TMobileSource : public TFakeSource {
 public:
  using TFakeSource::TFakeSource;

  bool SupportsMobileExport() const override { return Supports; }
  void ExportSearchResults(const IInterfaceList& iList, const TStringList& iParams,
                           TStringList& ioLines) override {
    for (int i = 0; i < iList.GetCount(); ++i) {
      const auto result = GetAs<ISearchResult>(iList, i);
      ioLines.Add(u"[Ergebnis]");
      ioLines.Add(u"pluginguid=" + GUIDToString(GetId()));
      ioLines.Add(u"categoryguid=" + iParams.GetValue(u"categoryguid"));
      ioLines.Add(u"Name=" + result->GetName());
      if (result->HasEndTime()) {
        ioLines.Add(u"offerdateutc=" +
                    FormatDateTime(u"yyyy-mm-dd hh:nn:ss", result->GetEndTime()));
      }
      for (const TString& line : MoreLines) ioLines.Add(line);
      if (EndsElements) ioLines.Add(u"[/irgendwas]");
    }
  }
  TIntf<IInterfaceList> CreateSearchResults(const TStringList& iFields) override {
    LastFields = iFields.Lines();
    const TIntf<IInterfaceList> results = NewInterfaceList();
    if (iFields.GetValue(u"name").empty()) return results;
    results->Add(FakeResult(iFields.GetValue(u"name")));
    results->Add(FakeResult(u"der zweite zählt nicht"));
    return results;
  }
  bool HandlesPluginGuid(TStringView iGuid) const override {
    return iGuid == GUIDToString(GetId());
  }

  bool Supports = true;
  bool EndsElements = true;
  std::vector<TString> MoreLines;
  std::vector<TString> LastFields;
};

}  // namespace kk
