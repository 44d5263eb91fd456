#include "views/explorerbar/TExplorerBarPanelItemDetails.h"

#include "host/base/Guard.h"
#include "host/common/Images.h"
#include "host/contract/ISearchResultUpdate.h"
#include "host/controls/TUpdating.h"
#include "persistence/TWatchlistHandler.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

TExplorerBarPanelItemDetails::TExplorerBarPanelItemDetails()
    : TCommonExplorerBarPanel(cExplorerBarPanelDetailsId, cExplorerBarPanelDetailsSortOrder,
                              u"TExplorerBarPanelItemDetails", _resExplorerBarPanelDetails),
      FDescriptionTitle(MakeIntf<TCommonExplorerBarText>(
          cWatchlistExplorerbarItemDetailsDescriptionTitleId,
          cWatchlistExplorerbarItemDetailsDescriptionTitleSortOrder,
          _resExplorerBarDetailsDescription)),
      FDescription(MakeIntf<TCommonExplorerBarLink>(
          cWatchlistExplorerbarItemDetailsDescriptionTextId,
          cWatchlistExplorerbarItemDetailsDescriptionTextSortOrder, TStringView())),
      FUpdateDateTime(MakeIntf<TCommonExplorerBarCaptionAndValue>(
          cWatchlistExplorerbarItemDetailsUpdateDateTimeId,
          cWatchlistExplorerbarItemDetailsUpdateDateTimeSortOrder,
          _resExplorerBarDetailsUpdateDateTime)),
      FUpdate(MakeIntf<TCommonExplorerBarLink>(
          cWatchlistExplorerbarItemDetailsUpdateId, cWatchlistExplorerbarItemDetailsUpdateSortOrder,
          _resExplorerBarDetailsUpdate, CreateBmp({}, cExplorerbandbarBitmapRefresh))),
      FUpdateNotIfFinished(MakeIntf<TCommonExplorerBarText>(
          cWatchlistExplorerbarItemDetailsUpdateNotIfFinishedId,
          cWatchlistExplorerbarItemDetailsUpdateNotIfFinishedSortOrder,
          _resExplorerBarDetailsUpdateNotIfFinished)) {
  using TSelf = TExplorerBarPanelItemDetails;
  FDescription->SetWordWrap(true);
  FDescription->SetOnClick(TNotifyEvent::Of<&TSelf::DoClickEditDescription>(this));
  FUpdate->SetWordWrap(true);
  FUpdate->SetOnClick(TNotifyEvent::Of<&TSelf::DoClickUpdate>(this));
  FUpdateNotIfFinished->SetWordWrap(true);
  RefreshDisplay();
}

TExplorerBarPanelItemDetails::~TExplorerBarPanelItemDetails() {
  FDescription->SetOnClick({});
  FUpdate->SetOnClick({});
}

void TExplorerBarPanelItemDetails::Init() {
  const TUpdating updating(GetGroup());
  Add(MakeIntf<TCommonExplorerBarSeparator>(
      cWatchlistExplorerbarItemDetailsUpdateSeparatorId,
      cWatchlistExplorerbarItemDetailsUpdateSeparatorSortOrder));
  Add(FDescriptionTitle);
  Add(FDescription);
  Add(MakeIntf<TCommonExplorerBarSeparator>(
      cWatchlistExplorerbarItemDetailsUpdateSeparator2Id,
      cWatchlistExplorerbarItemDetailsUpdateSeparator2SortOrder));
  Add(FUpdateDateTime);
  Add(FUpdate);
  Add(FUpdateNotIfFinished);
}

void TExplorerBarPanelItemDetails::SetSelection(const TIntf<ISearchResult>& iResult) {
  FResult = iResult;
  RefreshDisplay();
}

void TExplorerBarPanelItemDetails::RefreshDisplay() {
  const TUpdating updating(GetGroup());
  if (Guarded(u"TExplorerBarPanelItemDetails.RefreshDisplay", [this] { ShowResult(); })) return;
  FUpdate->SetVisible(false);
  FUpdateNotIfFinished->SetVisible(false);
}

void TExplorerBarPanelItemDetails::RefreshDisplayIfEquals(const TIntf<ISearchResult>& iResult) {
  if (!iResult || !FResult) return;
  if (SameGuid(iResult->GetId(), FResult->GetId())) RefreshDisplay();
}

void TExplorerBarPanelItemDetails::ShowResult() {
  const TWatchlistItem* item = nullptr;
  const TWatchlistPlugin* group = nullptr;
  if (FResult) {
    const TGuid id = FResult->GetId();
    item = Handler()->LstCategory().FindItemById(id);
    group = Handler()->LstCategory().FindPluginByItemId(id);
  }
  const bool supports = group != nullptr && Supports<ISearchResultUpdate>(group->Integration());
  ShowNote(item);
  ShowUpdate(supports ? item : nullptr);
}

// A note is itself the link that opens its editor.
void TExplorerBarPanelItemDetails::ShowNote(const TWatchlistItem* iItem) {
  FDescriptionTitle->SetVisible(iItem != nullptr);
  FDescription->SetVisible(iItem != nullptr);
  const TString note = iItem == nullptr ? TString() : Trim(iItem->Description().GetText());
  if (note.empty()) {
    FDescription->SetCaption(_resExplorerBarDetailsEditDescription);
    FDescription->SetImage(CreateBmp({}, cExplorerbandbarBitmapEdit));
    return;
  }
  FDescription->SetCaption(ReplaceAll(note, u"\r\n", u" "));
  FDescription->SetImage({});
}

void TExplorerBarPanelItemDetails::ShowUpdate(const TWatchlistItem* iItem) {
  FUpdateDateTime->SetVisible(iItem != nullptr);
  if (iItem != nullptr) {
    const TDateTime date = iItem->LastUpdateDate();
    FUpdateDateTime->SetValue(date.IsZero() ? TString(_resExplorerBarNone) : DateTimeToStr(date));
  }
  const bool canUpdate = iItem != nullptr && iItem->CanUpdate();
  FUpdate->SetVisible(canUpdate);
  FUpdateNotIfFinished->SetVisible(iItem != nullptr && !canUpdate);
}

void TExplorerBarPanelItemDetails::DoClickUpdate(TObject* /*Sender*/) {
  if (FOnClickUpdate) FOnClickUpdate(this);
}

void TExplorerBarPanelItemDetails::DoClickEditDescription(TObject* /*Sender*/) {
  if (FOnClickEditDescription) FOnClickEditDescription(this);
}

}  // namespace kk
