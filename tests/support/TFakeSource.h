#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/contract/ISearchResultConverter.h"
#include "host/contract/ISearchResultUpdate.h"
#include "host/contract/ISearchResults.h"
#include "host/contract/IWatchlistIntegration.h"
#include "host/contract/IWatchlistVisualization.h"

namespace kk {

/// A search result of the fake source. Two are the same if their article keys are.
class TFakeSearchResult : public TInterfaced<ISearchResult> {
 public:
  explicit TFakeSearchResult(TStringView iName, const TGuid& iId = NewGuid());

  TGuid GetId() const override { return FId; }
  TString GetName() const override { return FName; }
  bool HasEndTime() const override { return !FEndTime.IsZero(); }
  TDateTime GetEndTime() const override { return FEndTime; }
  void SetId(const TGuid& iId) override { FId = iId; }
  bool IsSame(const TIntf<ISearchResult>& iOther) const override;
  TIntf<ISearchResult> Clone() const override;

  void SetName(TStringView iName) { FName = iName; }
  void SetEndTime(TDateTime iEndTime) { FEndTime = iEndTime; }
  /// The name at first.
  void SetArticle(TStringView iArticle) { FArticle = iArticle; }
  const TString& Article() const { return FArticle; }

 private:
  TGuid FId;
  TString FName;
  TString FArticle;
  TDateTime FEndTime;
};

/// A new result whose article is its name.
TIntf<ISearchResult> FakeResult(TStringView iName, TDateTime iEndTime = {});

/// What the fake source's view has on show; the test selects in it.
class TFakeSearchResults : public TInterfaced<ISearchResults> {
 public:
  int GetCount() const override { return static_cast<int>(Items.size()); }
  int GetSelectedCount() const override { return static_cast<int>(Selected.size()); }
  TIntf<ISearchResult> GetItems(int iIndex) const override;
  TIntf<ISearchResult> GetSelectedItems(int iIndex) const override;
  TIntf<ISearchResult> GetFocused() const override;

  /// Selects these and gives the first one the focus.
  void Select(const std::vector<TIntf<ISearchResult>>& iResults);

  std::vector<TIntf<ISearchResult>> Items;
  std::vector<TIntf<ISearchResult>> Selected;
  TIntf<ISearchResult> Focused;
  /// What it raises when it is asked for the focused result; empty for nothing.
  TString FocusFailure;
};

/// Results: whether its view answers for ISearchResults, and hands them to extensions.
struct TFakeAbilities {
  bool Update = true;
  bool Visualization = true;
  bool Results = true;
};

/// A source that can be watched and keeps its results in lines of its own. What it can do beside
/// that is chosen at its making; its refreshes wait until the test ends them.
class TFakeSource : public TInterfaced<IWatchlistIntegration> {
 public:
  explicit TFakeSource(TStringView iName, const TGuid& iId = NewGuid(),
                       TFakeAbilities iAbilities = {});

  TGuid GetId() const override { return FId; }
  TGuid GetAffiliateId() const override { return FAffiliateId; }
  TString GetName() const override { return FName; }
  bool SupportsMobileExport() const override { return false; }
  TIntf<IInterfaceList> LoadSearchResults(TStream& iStream, bool iDecodeUTF8) override;
  void SaveSearchResults(const IInterfaceList& iList, TStream& ioStream) override;
  void ExportSearchResults(const IInterfaceList&, const TStringList&, TStringList&) override {}
  TIntf<IInterfaceList> CreateSearchResults(const TStringList&) override;
  bool HandlesPluginGuid(TStringView) const override { return false; }

  void SetAffiliateId(const TGuid& iId) { FAffiliateId = iId; }
  /// What the next loads and saves raise; empty for nothing.
  void SetLoadFailure(TStringView iMessage) { FLoadFailure = iMessage; }
  void SetSaveFailure(TStringView iMessage) { FSaveFailure = iMessage; }
  /// What the view raises when it is to redraw a row; empty for nothing.
  void SetViewFailure(TStringView iMessage) { FViewFailure = iMessage; }
  bool LastDecodeUTF8() const { return FLastDecodeUTF8; }
  int SaveCount() const { return FSaveCount; }

  /// The refreshes under way, in order of their start.
  struct TRequest {
    TIntf<ISearchResult> Clone;
    TNotifyEventSearchResult OnFinished;
  };
  std::vector<TRequest>& Requests() { return FRequests; }
  /// Ends the first refresh under way with its own clone, or with another result.
  void Finish(bool iSucceeded, TIntf<ISearchResult> iResult = {});
  /// With the flag, refreshes end well before UpdateSearchResult returns.
  void SetAnswersAtOnce(bool iAtOnce) { FAnswersAtOnce = iAtOnce; }

  /// What a "-rem" value of its own begins with: "fake:" and the article's name.
  static constexpr char16_t cScheme[] = u"fake:";
  /// What the view was told, one line a call: "SetResults 3", "RefreshResult Name", ...
  std::vector<std::string>& ViewCalls() { return FViewCalls; }
  std::vector<TIntf<IInterface>>& Extensions() { return FExtensions; }
  /// What its view has on show.
  TFakeSearchResults& Results() { return *ResultsOnShow(); }
  /// The panel that its view was given; null for none.
  TPanel* Container() const { return FContainer; }
  /// What its view answers for beside itself, and what it names as its sub-visualizations; empty
  /// for no list.
  std::vector<TIntf<IInterface>>& ViewParts() { return FViewParts; }
  void SetSubVisualizations(TIntf<IInterfaceList> iList) { FSubVisualizations = std::move(iList); }
  /// The call on its view, as ViewCalls has it, that fails the next time; empty for none.
  void SetFailingViewCall(const std::string& iCall) { FFailingViewCall = iCall; }
  /// Whether its view has texts for reminders; so at first: for the kind 2 of an article "Uhr" the
  /// caption "Uhr", the text "Text 2: Uhr" and the link "https://fake.test/2/Uhr".
  void SetReminderTexts(bool iHasSome) { FReminderTexts = iHasSome; }
  /// What the view raises when it is asked for such texts; empty for nothing.
  void SetReminderTextFailure(TStringView iMessage) { FReminderTextFailure = iMessage; }

 protected:
  bool QueryDelegated(const TGuid& iIid, void** oInterface) override;

 private:
  friend class TFakeUpdate;
  friend class TFakeVisualization;

  const TIntf<TFakeSearchResults>& ResultsOnShow();

  TGuid FId;
  TGuid FAffiliateId;
  TString FName;
  TFakeAbilities FAbilities;
  TString FLoadFailure;
  TString FSaveFailure;
  TString FViewFailure;
  TString FReminderTextFailure;
  bool FLastDecodeUTF8 = false;
  bool FAnswersAtOnce = false;
  bool FReminderTexts = true;
  int FSaveCount = 0;
  std::vector<TRequest> FRequests;
  std::vector<std::string> FViewCalls;
  std::vector<TIntf<IInterface>> FExtensions;
  TIntf<TFakeSearchResults> FResults;  // from the first use on
  TPanel* FContainer = nullptr;
  std::vector<TIntf<IInterface>> FViewParts;
  TIntf<IInterfaceList> FSubVisualizations;
  std::string FFailingViewCall;
};

}  // namespace kk
