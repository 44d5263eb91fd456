#include "host/search/TSearchTab.h"

#include <utility>

#include "host/base/Exception.h"
#include "host/base/Guard.h"
#include "host/base/TStringList.h"

namespace kk {

// From the end of the first constructor on the tab counts as made: a failure in this one ends it.
TSearchTab::TSearchTab(TIntf<ISearchSource> iSource,
                       const std::vector<TIntf<IInterfaceList>>& iExtensions, TTabStrip& ioStrip,
                       TPanel& ioResults)
    : TSearchTab(std::move(iSource), ioStrip, ioResults) {
  FSource->SetContainer(&FContainer);
  for (const TIntf<IInterfaceList>& extensions : iExtensions) {
    if (extensions) AddExtensions(extensions);
  }
  if (auto extender = Supports<IExplorerBarExtender>(FSource)) {
    FExplorerBarExtenders.push_back(std::move(extender));
  }
  FSource->SetOnSelectionChanged(TNotifyEvent::Of<&TSearchTab::DoSelectionChanged>(this));
}

TSearchTab::TSearchTab(TIntf<ISearchSource> iSource, TTabStrip& ioStrip, TPanel& ioResults)
    : FSource(std::move(iSource)),
      FHead(ioStrip, FSource->GetCaption()),
      FContainer(&ioResults, u"pnlSource") {
  FHead.SetImage(FSource->GetImage());
  FHead.SetImageSelected(FSource->GetImageSelected());
  FHead.SetOnClick(TNotifyEvent::Of<&TSearchTab::DoHeadClick>(this));
  FContainer.SetVisible(false);
  FContainer.SetStretches(true);
}

TSearchTab::~TSearchTab() {
  FContainer.SetVisible(false);
  Guarded(u"TSearchTab.Cancel", [this] { FSource->Cancel(); });
  Guarded(u"TSearchTab.SetOnSelectionChanged", [this] { FSource->SetOnSelectionChanged({}); });
  Guarded(u"TSearchTab.ReleaseSearch", [this] { FSource->ReleaseSearch(); });
  Guarded(u"TSearchTab.SetContainer", [this] { FSource->SetContainer(nullptr); });
}

void TSearchTab::AddExtensions(const TIntf<IInterfaceList>& iExtensions) {
  FSource->AddExtensions(iExtensions);
  for (int i = 0; i < iExtensions->GetCount(); ++i) {
    if (auto extender = GetAs<IExplorerBarExtender>(*iExtensions, i)) {
      FExplorerBarExtenders.push_back(std::move(extender));
    }
  }
}

void TSearchTab::Search(TStringView iText) {
  FProblems.clear();
  SetState(TSearchState::ssRunning);
  try {
    FSource->Search(iText, TNotifySearchFinished::Of<&TSearchTab::DoSearchFinished>(this));
  } catch (const std::exception& e) {
    AddProblems(MessageOf(e));
    SetState(TSearchState::ssDone);
  }
}

void TSearchTab::Cancel() {
  if (FState != TSearchState::ssRunning) return;
  FState = TSearchState::ssCancelled;
  Guarded(u"TSearchTab.Cancel", [this] { FSource->Cancel(); });
  SetState(TSearchState::ssCancelled);
}

void TSearchTab::DoSearchFinished(TObject*, TStringView iProblem) {
  if (FState != TSearchState::ssRunning) return;
  AddProblems(iProblem);
  SetState(TSearchState::ssDone);
}

void TSearchTab::AddProblems(TStringView iText) {
  TStringList lines;
  lines.SetText(iText);
  for (const TString& line : lines.Lines()) {
    TString problem = Trim(line);
    if (!problem.empty()) FProblems.push_back(std::move(problem));
  }
}

void TSearchTab::SetState(TSearchState iState) {
  FState = iState;
  if (FOnState) FOnState(this);
}

int TSearchTab::ResultCount() const {
  int count = 0;
  Guarded(u"TSearchTab.ResultCount", [&] {
    if (const auto results = FSource->GetSearchResults()) count = results->GetCount();
  });
  return count;
}

void TSearchTab::AddTo(IExplorerBar& ioBar) {
  for (const TIntf<IExplorerBarExtender>& extender : FExplorerBarExtenders) {
    Guarded(u"TSearchTab.AddTo", [&] {
      extender->AddPanels(&ioBar);
      for (int i = 0; i < ioBar.GetCount(); ++i) extender->AddItems(ioBar.GetPanels(i));
    });
  }
}

void TSearchTab::DeleteFrom(IExplorerBar& ioBar) {
  for (const TIntf<IExplorerBarExtender>& extender : FExplorerBarExtenders) {
    Guarded(u"TSearchTab.DeleteFrom", [&] {
      for (int i = 0; i < ioBar.GetCount(); ++i) extender->DeleteItems(ioBar.GetPanels(i));
      extender->DeletePanels(&ioBar);
    });
  }
}

void TSearchTab::DoHeadClick(TObject*) {
  if (FOnSelect) FOnSelect(this);
}

void TSearchTab::DoSelectionChanged(TObject*) {
  if (FOnSelectionChanged) FOnSelectionChanged(this);
}

}  // namespace kk
