#include "views/explorerbar/TExplorerBarPanelItemMore.h"

#include "host/common/Images.h"
#include "host/controls/TUpdating.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

TExplorerBarPanelItemMore::TExplorerBarPanelItemMore()
    : TCommonExplorerBarPanel(cExplorerbarPanelMoreId, cExplorerBarPanelMoreSortOrder,
                              u"TExplorerBarPanelItemMore", _resExplorerBarPanelMore),
      FExport(MakeIntf<TCommonExplorerBarLink>(
          cWatchlistExplorerbarItemMoreExportId, cWatchlistExplorerbarItemMoreExportSortOrder,
          _resExplorerBarMoreExport, CreateBmp({}, cExplorerbandbarBitmapExport))),
      FImport(MakeIntf<TCommonExplorerBarLink>(
          cWatchlistExplorerbarItemMoreImportId, cWatchlistExplorerbarItemMoreImportSortOrder,
          _resExplorerBarMoreImport, CreateBmp({}, cExplorerbandbarBitmapImport))),
      FPrint(MakeIntf<TCommonExplorerBarLink>(
          cWatchlistExplorerbarItemMorePrintId, cWatchlistExplorerbarItemMorePrintSortOrder,
          _resExplorerBarMorePrint, CreateBmp({}, cExplorerbandbarBitmapPrint))) {
  using TSelf = TExplorerBarPanelItemMore;
  FExport->SetOnClick(TNotifyEvent::Of<&TSelf::DoClickExport>(this));
  FImport->SetOnClick(TNotifyEvent::Of<&TSelf::DoClickImport>(this));
  FPrint->SetOnClick(TNotifyEvent::Of<&TSelf::DoClickPrint>(this));
}

TExplorerBarPanelItemMore::~TExplorerBarPanelItemMore() {
  FExport->SetOnClick({});
  FImport->SetOnClick({});
  FPrint->SetOnClick({});
}

void TExplorerBarPanelItemMore::Init() {
  const TUpdating updating(GetGroup());
  Add(MakeIntf<TCommonExplorerBarSeparator>(cWatchlistExplorerbarItemMoreSeparatorId,
                                            cWatchlistExplorerbarItemMoreSeparatorSortOrder));
  Add(FExport);
  Add(FImport);
  Add(FPrint);
  Add(MakeIntf<TCommonExplorerBarSeparator>(
      cWatchlistExplorerbarItemMoreDisclaimerSeparatorId,
      cWatchlistExplorerbarItemMoreDisclaimerSeparatorSortOrder));
  const auto disclaimer = MakeIntf<TCommonExplorerBarText>(
      cWatchlistExplorerbarItemMoreDisclaimerId, cWatchlistExplorerbarItemMoreDisclaimerSortOrder,
      _resExplorerBarMoreDisclaimer);
  disclaimer->SetWordWrap(true);
  Add(disclaimer);
}

void TExplorerBarPanelItemMore::DoClickExport(TObject* /*Sender*/) {
  if (FOnClickExport) FOnClickExport(this);
}

void TExplorerBarPanelItemMore::DoClickImport(TObject* /*Sender*/) {
  if (FOnClickImport) FOnClickImport(this);
}

void TExplorerBarPanelItemMore::DoClickPrint(TObject* /*Sender*/) {
  if (FOnClickPrint) FOnClickPrint(this);
}

}  // namespace kk
