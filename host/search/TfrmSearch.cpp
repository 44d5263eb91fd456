#include "host/search/TfrmSearch.h"

#include <algorithm>
#include <utility>

#include "host/base/TStringList.h"
#include "host/controls/TUpdating.h"
#include "host/search/SearchConsts.h"
#include "host/search/TfrmSearchProblems.h"

namespace kk {

namespace {

constexpr int cProgressMs = 250;
constexpr int cFieldLines = 4;
constexpr int cExplorerBarWidth = 220;
constexpr int cExplorerBarMinWidth = 50;
// What stands below the list of one problem; the rest is in the window of all.
constexpr size_t cMaxProblem = 200;

// Lines that say something, without the blanks at their ends.
void TakeUsedLines(const TStringList& iLines, TStringList& oUsed) {
  for (const TString& line : iLines.Lines()) {
    const TString used = Trim(line);
    if (!used.empty()) oUsed.Add(used);
  }
}

// For the caption of a label that leads to a field, where "&" marks an access key.
TString AsCaption(TStringView iText) { return ReplaceAll(iText, u"&", u"&&"); }

TString CountText(int iCount) {
  if (iCount == 0) return TString(_resSearchNoResult);
  return iCount == 1 ? TString(_resSearchOneResult) : Format(_resSearchResults, {iCount});
}

TString StatusOf(const TSearchTab& iTab) {
  const TString count = CountText(iTab.ResultCount());
  switch (iTab.State()) {
    case TSearchState::ssNone:
      return {};
    case TSearchState::ssRunning:
      return Format(_resSearchRunning, {count});
    case TSearchState::ssCancelled:
      return Format(_resSearchCancelled, {count});
    case TSearchState::ssDone:
      break;
  }
  const size_t problems = iTab.Problems().size();
  if (problems == 0) return count;
  return problems == 1 ? Format(_resSearchWithOneProblem, {count})
                       : Format(_resSearchWithProblems, {count, problems});
}

}  // namespace

TfrmSearch::TfrmSearch()
    : TfrmKKCommonSectionBase(nullptr, u"TfrmSearch", _resSearchCaption),
      FPanelMore(MakeIntf<TCommonExplorerBarPanel>(cSearchPanelMoreId, 0, u"pnlMore",
                                                   _resSearchPanelMore)),
      FMoreHint(MakeIntf<TCommonExplorerBarText>(cSearchItemMoreHintId, 0, _resSearchMoreHint)) {
  Layout();
  BindEvents();
  FMoreHint->SetWordWrap(true);
  FPanelMore->Add(FMoreHint);
  FExplorerBar->Add(FPanelMore);
  sttsbr.AddPanel();
  ShowState();
}

TfrmSearch::~TfrmSearch() { TfrmSearch::Uninitialize(); }

void TfrmSearch::Layout() {
  pnlMain.SetArrangement(TArrangement::arRow);
  pnlMain.SetStretches(true);
  pnlLeft.SetStretches(true);
  pnlButtons.SetArrangement(TArrangement::arRow);
  mmText.SetVisibleLines(cFieldLines);
  pnlResults.SetArrangement(TArrangement::arStack);
  pnlResults.SetStretches(true);
  pnlMoreProblems.SetArrangement(TArrangement::arRow);
  tbstrpSources.SetVisible(false);
  lblTryExample.SetVisible(false);
  lblTryExample.SetLooksLikeLink(true);
  pnlExplorerBar.SetWidth(cExplorerBarWidth);
  pnlExplorerBar.SetMinSize(cExplorerBarMinWidth, 0);
  pnlExplorerBar.SetHasSplitter(true);
  xplrbr.SetStretches(true);
}

void TfrmSearch::BindEvents() {
  btnSearch.SetOnClick(TNotifyEvent::Of<&TfrmSearch::btnSearchClick>(this));
  btnCancel.SetOnClick(TNotifyEvent::Of<&TfrmSearch::btnCancelClick>(this));
  lblTryExample.SetOnClick(TNotifyEvent::Of<&TfrmSearch::lblTryExampleClick>(this));
  btnProblems.SetOnClick(TNotifyEvent::Of<&TfrmSearch::btnProblemsClick>(this));
  mmText.SetOnKeyPress(TKeyPressEvent::Of<&TfrmSearch::mmTextKeyPress>(this));
  SetDefaultButton(&btnSearch);
  SetCancelButton(&btnCancel);
}

TGuid TfrmSearch::GetFormID() const { return cMainMenuFormIDSearch; }

TString TfrmSearch::GetIniSectionName() const { return u"Search"; }

void TfrmSearch::Uninitialize() {
  StopProgress();
  SelectTab(nullptr);
  FTabs.clear();
  FExplorerBar->Clear();
  FToolbar.reset();
  TfrmKKCommonSectionBase::Uninitialize();
}

void TfrmSearch::FirstShow() { RefreshToolbar(); }

void TfrmSearch::Show() {
  TfrmKKCommonSectionBase::Show();
  SetFocusedControl(&mmText);
}

void TfrmSearch::RefreshToolbar() {
  FToolbar = std::make_unique<TCommonToolbarKK>(Application(), cSearchPluginId, tlbrNavigation);
  FToolbar->Init();
}

void TfrmSearch::AddSource(const TIntf<ISearchSource>& iSource,
                           const std::vector<TIntf<IInterfaceList>>& iExtensions) {
  auto tab = std::make_unique<TSearchTab>(iSource, iExtensions, tbstrpSources, pnlResults);
  tab->SetOnSelect(TNotifyEvent::Of<&TfrmSearch::DoTabSelect>(this));
  tab->SetOnState(TNotifyEvent::Of<&TfrmSearch::DoTabState>(this));
  tab->SetOnSelectionChanged(TNotifyEvent::Of<&TfrmSearch::DoTabSelectionChanged>(this));
  FTabs.push_back(std::move(tab));
  tbstrpSources.SetVisible(FTabs.size() > 1);
  if (FSelected == nullptr) SelectTab(FTabs.back().get());
}

void TfrmSearch::SetOnTryExample(TNotifyEvent iEvent) {
  FOnTryExample = iEvent;
  ShowState();
}

void TfrmSearch::SelectTab(TSearchTab* iTab) {
  const TUpdating updating(*this);
  if (FSelected != nullptr) {
    FSelected->DeleteFrom(*FExplorerBar);
    FSelected->Container().SetVisible(false);
  }
  FSelected = iTab;
  FComplaint.clear();
  if (FSelected != nullptr) {
    FSelected->Head().SetSelected(true);
    FSelected->Container().SetVisible(true);
    FSelected->Container().BringToFront();
    FSelected->AddTo(*FExplorerBar);
  }
  ShowState();
}

void TfrmSearch::SearchFor(TStringView iText) {
  if (iText.size() > cMaxText) {
    FComplaint = Format(_resSearchTooLong, {cMaxText});
    return ShowState();
  }
  TStringList lines;
  lines.SetText(iText);
  TStringList used;
  TakeUsedLines(lines, used);
  mmText.SetLines(used);
  StartSearch();
}

void TfrmSearch::StartSearch() {
  if (FSelected == nullptr) return;
  TStringList lines;
  TakeUsedLines(mmText.Lines(), lines);
  const TString text = lines.GetDelimited(u"\n");
  FComplaint.clear();
  if (text.empty()) FComplaint = _resSearchNothingToSearch;
  if (text.size() > cMaxText) FComplaint = Format(_resSearchTooLong, {cMaxText});
  if (FComplaint.empty()) return FSelected->Search(text);
  SetFocusedControl(&mmText);
  ShowState();
}

void TfrmSearch::ShowState() {
  const TUpdating updating(*this);
  const bool hasSource = FSelected != nullptr;
  const TSearchState state = hasSource ? FSelected->State() : TSearchState::ssNone;
  const bool isRunning = state == TSearchState::ssRunning;
  lblPrompt.SetCaption(hasSource ? AsCaption(FSelected->Source()->GetPrompt())
                                 : TString(_resSearchNoSource));
  mmText.SetEnabled(hasSource);
  btnSearch.SetEnabled(hasSource);
  // The focus does not stay on a button that can't be pressed any more.
  if (!isRunning && FocusedControl() == &btnCancel) SetFocusedControl(&mmText);
  btnCancel.SetEnabled(isRunning);
  pnlEmpty.SetVisible(state == TSearchState::ssNone);
  lblEmpty.SetVisible(hasSource);
  lblTryExample.SetVisible(hasSource && FOnTryExample);
  pnlResults.SetVisible(state != TSearchState::ssNone);
  isRunning ? StartProgress() : StopProgress();
  ShowStatus();
  ShowProblems();
  ShowMoreHint();
}

void TfrmSearch::ShowStatus() {
  if (FComplaint.empty() && FSelected != nullptr) {
    sttsbr.SetPanelText(0, StatusOf(*FSelected));
  } else {
    sttsbr.SetPanelText(0, FComplaint);
  }
}

void TfrmSearch::ShowProblems() {
  static const std::vector<TString> cNone;
  const std::vector<TString>& problems = FSelected != nullptr ? FSelected->Problems() : cNone;
  pnlProblems.SetVisible(!problems.empty());
  pnlMoreProblems.SetVisible(false);
  if (problems.empty()) return lblProblem.SetCaption({});
  lblProblem.SetCaption(ShortenedText(problems[0], cMaxProblem));
  pnlMoreProblems.SetVisible(problems.size() > 1 || lblProblem.Caption() != problems[0]);
  const size_t more = problems.size() - 1;
  if (more == 0) return lblMoreProblems.SetCaption(_resSearchProblemShortened);
  lblMoreProblems.SetCaption(more == 1 ? TString(_resSearchOneMoreProblem)
                                       : Format(_resSearchMoreProblems, {more}));
}

void TfrmSearch::ShowMoreHint() {
  const auto items = FPanelMore->GetGroup().Items();
  FMoreHint->SetVisible(std::ranges::none_of(items, [this](const TIntf<IExplorerBarItem>& iItem) {
    return iItem->GetId() != cSearchItemMoreHintId && iItem->GetVisible();
  }));
}

void TfrmSearch::StartProgress() {
  if (FProgressTimer != 0) return;
  FProgressTimer = MainLoop().StartTimer(cProgressMs, [this] { ShowStatus(); });
}

void TfrmSearch::StopProgress() {
  const auto timer = std::exchange(FProgressTimer, 0);
  if (timer != 0) MainLoop().StopTimer(timer);
}

void TfrmSearch::btnSearchClick(TObject*) { StartSearch(); }

void TfrmSearch::btnCancelClick(TObject*) {
  if (FSelected != nullptr) FSelected->Cancel();
}

void TfrmSearch::lblTryExampleClick(TObject*) {
  if (FOnTryExample) FOnTryExample(this);
}

void TfrmSearch::btnProblemsClick(TObject*) {
  const std::vector<TString> problems = FSelected->Problems();  // a search may end meanwhile
  TfrmSearchProblems::Display(this, problems);
}

// Who types one address wants to see what is there; who types several goes on in the next line.
void TfrmSearch::mmTextKeyPress(TObject*, char16_t& ioKey) {
  const bool isReturn = ioKey == cKeyReturn && mmText.Lines().GetCount() <= 1;
  if (!isReturn && ioKey != cKeyCtrlReturn) return;
  ioKey = 0;
  btnSearch.Click();
}

void TfrmSearch::DoTabSelect(TObject* Sender) { SelectTab(dynamic_cast<TSearchTab*>(Sender)); }

void TfrmSearch::DoTabState(TObject* Sender) {
  if (Sender == FSelected) ShowState();
}

void TfrmSearch::DoTabSelectionChanged(TObject* Sender) {
  if (Sender == FSelected) ShowMoreHint();
}

}  // namespace kk
