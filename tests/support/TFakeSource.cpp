#include "tests/support/TFakeSource.h"

#include <algorithm>
#include <utility>

#include "host/base/Exception.h"
#include "host/contract/INotifications.h"
#include "host/contract/TPluginIntegration.h"

namespace kk {

TFakeSearchResult::TFakeSearchResult(TStringView iName, const TGuid& iId)
    : FId(iId), FName(iName), FArticle(iName) {}

bool TFakeSearchResult::IsSame(const TIntf<ISearchResult>& iOther) const {
  const auto* other = dynamic_cast<const TFakeSearchResult*>(iOther.Get());
  return other != nullptr && other->FArticle == FArticle;
}

TIntf<ISearchResult> TFakeSearchResult::Clone() const {
  const auto clone = MakeIntf<TFakeSearchResult>(FName, FId);
  clone->SetArticle(FArticle);
  clone->SetEndTime(FEndTime);
  return clone;
}

TIntf<ISearchResult> FakeResult(TStringView iName, TDateTime iEndTime) {
  const auto result = MakeIntf<TFakeSearchResult>(iName);
  result->SetEndTime(iEndTime);
  return result;
}

TIntf<ISearchResult> TFakeSearchResults::GetItems(int iIndex) const {
  return Items[CheckedIndex(iIndex, Items.size())];
}

TIntf<ISearchResult> TFakeSearchResults::GetSelectedItems(int iIndex) const {
  return Selected[CheckedIndex(iIndex, Selected.size())];
}

TIntf<ISearchResult> TFakeSearchResults::GetFocused() const {
  if (!FocusFailure.empty()) throw Exception(FocusFailure);
  return Focused;
}

void TFakeSearchResults::Select(const std::vector<TIntf<ISearchResult>>& iResults) {
  Selected = iResults;
  Focused = iResults.empty() ? nullptr : iResults.front();
}

namespace {

std::vector<TIntf<ISearchResult>> ResultsIn(const TIntf<IInterfaceList>& iList) {
  std::vector<TIntf<ISearchResult>> results;
  for (int i = 0; i < iList->GetCount(); ++i) results.push_back(GetAs<ISearchResult>(*iList, i));
  return results;
}

}  // namespace

// The parts of the source behind interfaces of their own keep it alive.
class TFakeUpdate : public TInterfaced<ISearchResultUpdate> {
 public:
  explicit TFakeUpdate(TFakeSource* iSource) : FSource(iSource) {}

  void UpdateSearchResult(const TIntf<ISearchResult>& iResult,
                          TNotifyEventSearchResult iOnFinished) override {
    FSource->FRequests.push_back({iResult, iOnFinished});
    if (FSource->FAnswersAtOnce) FSource->Finish(true);
  }

 private:
  TIntf<TFakeSource> FSource;
};

class TFakeReminderText : public TInterfaced<IReminderText> {
 public:
  TFakeReminderText(TStringView iName, TStringView iKind) : FName(iName), FKind(iKind) {}

  TString GetCaption() const override { return FName; }
  TString GetText() const override { return Format(u"Text %s: %s", {FKind, FName}); }
  TString GetLink() const override { return Format(u"https://fake.test/%s/%s", {FKind, FName}); }

 private:
  TString FName;
  TString FKind;
};

class TFakeVisualization : public TInterfaced<IWatchlistVisualization> {
 public:
  explicit TFakeVisualization(TFakeSource* iSource) : FSource(iSource) {}

  TString GetCaption() const override {
    Fail("GetCaption");
    return FSource->GetName();
  }
  TString GetMenuCaption() const override { return FSource->GetName() + u" (Menü)"; }
  TBitmap GetImage() const override { return {u"FAKE"}; }
  TBitmap GetImageSelected() const override { return {u"FAKESELECTED"}; }
  TIntf<IInterfaceList> GetSubVisualizations() const override {
    return FSource->FSubVisualizations;
  }
  TIntf<IIntegrationInfo> GetIntegrationInfo() const override {
    return MakeIntf<TPluginIntegrationInfo>(FSource->GetId(), TGroupIdentification{1});
  }
  void SetContainer(TPanel* iPanel) override {
    FSource->FContainer = iPanel;
    Note(iPanel != nullptr ? "SetContainer" : "SetContainer null");
  }
  void AddExtensions(const TIntf<IInterfaceList>& iExtensions) override {
    for (int i = 0; i < iExtensions->GetCount(); ++i) AddExtension(iExtensions->Get(i));
  }
  void AddExtension(const TIntf<IInterface>& iExtension) override {
    FSource->FExtensions.push_back(iExtension);
    Fail("AddExtension");
    const auto notifications = Supports<INotifications>(iExtension);
    if (notifications && FSource->FAbilities.Results) {
      notifications->SetSearchResults(FSource->ResultsOnShow());
    }
  }
  void SetResults(const TIntf<IInterfaceList>& iResults) override {
    FSource->Results().Items = ResultsIn(iResults);
    FSource->Results().Select({});
    Note("SetResults", iResults);
  }
  void RemoveResults(const TIntf<IInterfaceList>& iResults) override {
    for (const auto& result : ResultsIn(iResults)) {
      std::erase(FSource->Results().Items, result);
      std::erase(FSource->Results().Selected, result);
      if (FSource->Results().Focused == result) FSource->Results().Focused = nullptr;
    }
    Note("RemoveResults", iResults);
  }
  void SelectResults(const TIntf<IInterfaceList>& iResults) override {
    FSource->Results().Select(ResultsIn(iResults));
    Note("SelectResults", iResults);
  }
  void RefreshResult(const TIntf<ISearchResult>& iResult) override {
    Note("RefreshResult " + ToUtf8(iResult->GetName()));
    if (!FSource->FViewFailure.empty()) throw Exception(FSource->FViewFailure);
  }
  TIntf<IReminderText> GetReminderText(uint8_t iKind,
                                       const TIntf<ISearchResult>& iResult) override {
    const std::string kind = std::to_string(iKind);
    Note("GetReminderText " + kind + " " + ToUtf8(iResult->GetName()));
    if (!FSource->FReminderTextFailure.empty()) throw Exception(FSource->FReminderTextFailure);
    if (!FSource->FReminderTexts) return {};
    return MakeIntf<TFakeReminderText>(iResult->GetName(), FromUtf8(kind));
  }
  TIntf<ISearchResult> CreateSearchResultFromCmdLine(TStringView iValue) override {
    if (!StartsWith(iValue, TFakeSource::cScheme)) return {};
    return FakeResult(iValue.substr(std::size(TFakeSource::cScheme) - 1));
  }
  void ShowList() override { Note("ShowList"); }
  void HideList() override { Note("HideList"); }
  void ReleaseList() override { Note("ReleaseList"); }
  void ReleaseListData() override { Note("ReleaseListData"); }

 protected:
  bool QueryDelegated(const TGuid& iIid, void** oInterface) override {
    if (FSource->FAbilities.Update && iIid == IID_SearchResultUpdate) {
      return MakeIntf<TFakeUpdate>(FSource.Get())->QueryInterface(iIid, oInterface);
    }
    if (FSource->FAbilities.Results && iIid == IID_SearchResults) {
      return FSource->ResultsOnShow()->QueryInterface(iIid, oInterface);
    }
    const auto& parts = FSource->FViewParts;
    return std::any_of(parts.begin(), parts.end(), [&](const TIntf<IInterface>& iPart) {
      return iPart->QueryInterface(iIid, oInterface);
    });
  }

 private:
  void Fail(const std::string& iCall) const {
    if (FSource->FFailingViewCall != iCall) return;
    FSource->FFailingViewCall.clear();
    throw Exception(FromUtf8(iCall));
  }
  void Note(std::string iCall) {
    FSource->FViewCalls.push_back(iCall);
    Fail(iCall);
  }
  void Note(const std::string& iCall, const TIntf<IInterfaceList>& iResults) {
    Note(iCall + " " + std::to_string(iResults->GetCount()));
  }

  TIntf<TFakeSource> FSource;
};

TFakeSource::TFakeSource(TStringView iName, const TGuid& iId, TFakeAbilities iAbilities)
    : FId(iId), FAffiliateId(iId), FName(iName), FAbilities(iAbilities) {}

const TIntf<TFakeSearchResults>& TFakeSource::ResultsOnShow() {
  if (!FResults) FResults = MakeIntf<TFakeSearchResults>();
  return FResults;
}

bool TFakeSource::QueryDelegated(const TGuid& iIid, void** oInterface) {
  if (FAbilities.Update && iIid == IID_SearchResultUpdate) {
    return MakeIntf<TFakeUpdate>(this)->QueryInterface(iIid, oInterface);
  }
  if (FAbilities.Visualization && iIid == IID_WatchlistVisualization) {
    return MakeIntf<TFakeVisualization>(this)->QueryInterface(iIid, oInterface);
  }
  return false;
}

// A stream of this source: four lines a result - id, article, name, milliseconds of the end time.
TIntf<IInterfaceList> TFakeSource::LoadSearchResults(TStream& iStream, bool iDecodeUTF8) {
  FLastDecodeUTF8 = iDecodeUTF8;
  if (!FLoadFailure.empty()) throw Exception(FLoadFailure);
  const std::vector<TString> lines = Split(FromUtf8(iStream.ReadRest()), u'\n');
  const TIntf<IInterfaceList> results = NewInterfaceList();
  for (size_t i = 0; i + 3 < lines.size(); i += 4) {
    const auto result = MakeIntf<TFakeSearchResult>(lines[i + 2], StringToGUID(lines[i]));
    result->SetArticle(lines[i + 1]);
    result->SetEndTime(TDateTime::FromMs(StrToInt(lines[i + 3])));
    results->Add(result);
  }
  return results;
}

void TFakeSource::SaveSearchResults(const IInterfaceList& iList, TStream& ioStream) {
  ++FSaveCount;
  if (!FSaveFailure.empty()) throw Exception(FSaveFailure);
  for (int i = 0; i < iList.GetCount(); ++i) {
    const auto result = GetAs<ISearchResult>(iList, i);
    if (!result) continue;
    const auto* fake = dynamic_cast<TFakeSearchResult*>(result.Get());
    const TString lines = GUIDToString(result->GetId()) + u"\n" + fake->Article() + u"\n" +
                          result->GetName() + u"\n" + IntToStr(result->GetEndTime().Ms()) + u"\n";
    ioStream.Write(ToUtf8(lines));
  }
}

TIntf<IInterfaceList> TFakeSource::CreateSearchResults(const TStringList&) {
  return NewInterfaceList();
}

void TFakeSource::Finish(bool iSucceeded, TIntf<ISearchResult> iResult) {
  const TRequest request = FRequests.front();
  FRequests.erase(FRequests.begin());
  request.OnFinished(nullptr, iResult ? iResult : request.Clone, iSucceeded);
}

}  // namespace kk
