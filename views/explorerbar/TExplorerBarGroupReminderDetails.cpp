#include "views/explorerbar/TExplorerBarGroupReminderDetails.h"

#include "host/base/TClock.h"
#include "host/common/Images.h"
#include "host/controls/TUpdating.h"
#include "persistence/TWatchlistHandler.h"
#include "reminders/TLstRemindItemSync.h"

namespace kk {

namespace {

TIntf<TCommonExplorerBarLink> MakeLink(TStringView iCaption, TStringView iImage) {
  return MakeIntf<TCommonExplorerBarLink>(cEmptyGuid, 0, iCaption, CreateBmp({}, iImage));
}

TIntf<TCommonExplorerBarCaptionAndValue> MakeValue(TStringView iCaption, TStringView iValue = {}) {
  return MakeIntf<TCommonExplorerBarCaptionAndValue>(cEmptyGuid, 0, iCaption, iValue);
}

}  // namespace

TExplorerBarGroupReminderDetails::TExplorerBarGroupReminderDetails(TExplorerBar* iBar)
    : TKK5SkinExplorerGroup(iBar, u"TExplorerBarGroupReminderDetails",
                            _resExplorerBarGroupReminder),
      FAdd(MakeLink(_resExplorerBarRemindAdd, cExplorerbandbarBitmapAdd)),
      FEdit(MakeLink(_resExplorerBarRemindEdit, cExplorerbandbarBitmapEdit)),
      FDelete(MakeLink(_resExplorerBarRemindDelete, cExplorerbandbarBitmapDelete)),
      FType(MakeValue(_resExplorerBarRemindType)),
      FSound(MakeValue({}, _resExplorerBarRemindSound)),
      FDate(MakeValue(_resExplorerBarRemindDate)),
      FTime(MakeValue(_resExplorerBarRemindTime)) {
  using TSelf = TExplorerBarGroupReminderDetails;
  FAdd->SetOnClick(TNotifyEvent::Of<&TSelf::DoClickAdd>(this));
  FEdit->SetOnClick(TNotifyEvent::Of<&TSelf::DoClickEdit>(this));
  FDelete->SetOnClick(TNotifyEvent::Of<&TSelf::DoClickDelete>(this));
  AddItem(FAdd);
  AddItem(FEdit);
  AddItem(FDelete);
  AddItem(MakeIntf<TCommonExplorerBarSeparator>());
  AddItem(FType);
  AddItem(FSound);
  AddItem(FDate);
  AddItem(FTime);
  RefreshDisplay();
}

TExplorerBarGroupReminderDetails::~TExplorerBarGroupReminderDetails() {
  FAdd->SetOnClick({});
  FEdit->SetOnClick({});
  FDelete->SetOnClick({});
}

void TExplorerBarGroupReminderDetails::SetSelection(const TIntf<ISearchResult>& iResult) {
  FResult = iResult;
  RefreshDisplay();
}

void TExplorerBarGroupReminderDetails::RefreshDisplay() {
  const TUpdating updating(*this);
  std::unique_ptr<TRemindItem> reminder;
  if (FResult) reminder = Handler()->GetLstRemind().CloneItemBySearchResultId(FResult->GetId());
  ShowReminder(reminder.get());
  FAdd->SetVisible(reminder == nullptr && CanAdd());
  FEdit->SetVisible(reminder != nullptr);
  FDelete->SetVisible(reminder != nullptr);
}

void TExplorerBarGroupReminderDetails::RefreshDisplayIfEquals(const TIntf<ISearchResult>& iResult) {
  if (!iResult || !FResult) return;
  if (SameGuid(iResult->GetId(), FResult->GetId())) RefreshDisplay();
}

void TExplorerBarGroupReminderDetails::ShowReminder(const TRemindItem* iReminder) {
  const bool has = iReminder != nullptr;
  if (has) {
    const auto type = iReminder->RemindTypes().Highest();
    FType->SetValue(type ? RemindTypeText(*type) : TStringView());
    FDate->SetValue(ShortDateToStr(iReminder->RemindTime()));
    FTime->SetValue(LongTimeToStr(iReminder->RemindTime()));
  }
  FType->SetVisible(has);
  FSound->SetVisible(has && iReminder->LstDetails().GetCount() > 1 &&
                     iReminder->RemindTypes().Has(rtSound));
  FDate->SetVisible(has);
  FTime->SetVisible(has);
}

// A reminder can be set up only before a known end; one that is there can be changed behind it.
bool TExplorerBarGroupReminderDetails::CanAdd() const {
  return FResult && FResult->HasEndTime() && ExactTime().GetNow() < FResult->GetEndTime();
}

void TExplorerBarGroupReminderDetails::DoClickAdd(TObject* /*Sender*/) {
  if (FOnClickAdd) FOnClickAdd(this);
}

void TExplorerBarGroupReminderDetails::DoClickEdit(TObject* /*Sender*/) {
  if (FOnClickEdit) FOnClickEdit(this);
}

void TExplorerBarGroupReminderDetails::DoClickDelete(TObject* /*Sender*/) {
  if (FOnClickDelete) FOnClickDelete(this);
}

}  // namespace kk
