#pragma once

#include <memory>
#include <vector>

#include "host/base/TMainLoop.h"
#include "host/controls/TButton.h"
#include "host/controls/TCommonExplorerBar.h"
#include "host/controls/TCommonExplorerBarItem.h"
#include "host/controls/TCommonExplorerBarPanel.h"
#include "host/controls/TCommonToolbarKK.h"
#include "host/controls/TLabel.h"
#include "host/controls/TMemo.h"
#include "host/controls/TStatusBar.h"
#include "host/controls/TfrmKKCommonSectionBase.h"
#include "host/search/SearchResourceStrings.h"
#include "host/search/TSearchTab.h"

namespace kk {

/// The host's section "Suchen": what to look for, a tab for each source with the results that it
/// found, and beside them the links of other plug-ins for the selected results. Main thread.
class TfrmSearch final : public TfrmKKCommonSectionBase {
 public:
  /// The longest text that is taken, in UTF-16 units.
  static constexpr size_t cMaxText = 100'000;

  TfrmSearch();
  ~TfrmSearch() override;

  TGuid GetFormID() const override;
  TString GetIniSectionName() const override;
  /// Ends all searches and lets go of the sources and of what others added.
  void Uninitialize() override;
  /// The focus is in the field then.
  void Show() override;

  /// A further tab; the first one is selected. iExtensions: for each of the other plug-ins what its
  /// GetIntegrations returned for the source's GetIntegrationInfo; empty ones are passed over. What
  /// the source raises passes on, and there is no tab then.
  void AddSource(const TIntf<ISearchSource>& iSource,
                 const std::vector<TIntf<IInterfaceList>>& iExtensions);
  /// Fills the navigation toolbar anew from the host's buttons; the first Show does it by itself.
  void RefreshToolbar();
  /// Text that was dropped or pasted onto the window, or comes from elsewhere: its lines go into
  /// the field and the source of the selected tab looks for them.
  void SearchFor(TStringView iText);
  /// Null while there is no source.
  TSearchTab* SelectedTab() const { return FSelected; }

  /// The user wants to try the example shop: the receiver starts it and calls SearchFor with its
  /// addresses. Without an event nothing is offered.
  void SetOnTryExample(TNotifyEvent iEvent);

  TToolbar tlbrNavigation{this, u"tlbrNavigation"};
  TPanel pnlMain{this, u"pnlMain"};
  TPanel pnlLeft{&pnlMain, u"pnlLeft"};
  TPanel pnlInput{&pnlLeft, u"pnlInput"};
  TLabel lblPrompt{&pnlInput, u"lblPrompt", _resSearchNoSource};
  TMemo mmText{&pnlInput, u"mmText"};
  TPanel pnlButtons{&pnlLeft, u"pnlButtons"};
  TButton btnSearch{&pnlButtons, u"btnSearch", _resSearchStart};
  TButton btnCancel{&pnlButtons, u"btnCancel", _resSearchCancel};
  TTabStrip tbstrpSources{&pnlLeft, u"tbstrpSources"};
  TPanel pnlEmpty{&pnlLeft, u"pnlEmpty"};
  TLabel lblEmpty{&pnlEmpty, u"lblEmpty", _resSearchEmptyHint};
  TLabel lblTryExample{&pnlEmpty, u"lblTryExample", _resSearchTryExample};
  TPanel pnlResults{&pnlLeft, u"pnlResults"};
  TPanel pnlProblems{&pnlLeft, u"pnlProblems"};
  TLabel lblProblem{&pnlProblems, u"lblProblem"};
  TPanel pnlMoreProblems{&pnlLeft, u"pnlMoreProblems"};
  TLabel lblMoreProblems{&pnlMoreProblems, u"lblMoreProblems"};
  TButton btnProblems{&pnlMoreProblems, u"btnProblems", _resSearchShowProblems};
  TPanel pnlExplorerBar{&pnlMain, u"pnlExplorerBar"};
  TExplorerBar xplrbr{&pnlExplorerBar, u"xplrbr"};
  TStatusBar sttsbr{this, u"sttsbr"};

 protected:
  void FirstShow() override;

 private:
  void Layout();
  void BindEvents();
  void SelectTab(TSearchTab* iTab);
  void StartSearch();
  /// What there is to see of the selected tab's search.
  void ShowState();
  void ShowStatus();
  void ShowProblems();
  /// The panel of the explorer bar says what to do while nobody has a link in it.
  void ShowMoreHint();
  void StartProgress();
  void StopProgress();

  void btnSearchClick(TObject* Sender);
  void btnCancelClick(TObject* Sender);
  void lblTryExampleClick(TObject* Sender);
  void btnProblemsClick(TObject* Sender);
  void mmTextKeyPress(TObject* Sender, char16_t& ioKey);
  void DoTabSelect(TObject* Sender);
  void DoTabState(TObject* Sender);
  void DoTabSelectionChanged(TObject* Sender);

  TIntf<TCommonExplorerBar> FExplorerBar = MakeIntf<TCommonExplorerBar>(xplrbr);
  TIntf<TCommonExplorerBarPanel> FPanelMore;
  TIntf<TCommonExplorerBarText> FMoreHint;
  std::unique_ptr<TCommonToolbarKK> FToolbar;
  std::vector<std::unique_ptr<TSearchTab>> FTabs;
  TSearchTab* FSelected = nullptr;
  TString FComplaint;  // about what is in the field; empty for none
  TMainLoop::TTimerId FProgressTimer = 0;
  TNotifyEvent FOnTryExample;
};

}  // namespace kk
