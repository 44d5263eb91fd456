#include "views/explorerbar/TExplorerBarGroupCategoryDetails.h"

#include <algorithm>

#include "host/common/Images.h"
#include "host/controls/TUpdating.h"
#include "model/TWatchlistCategory.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

namespace {

// A text of this many lines is cut to fewer.
constexpr int cManyLines = 4;
constexpr int cKeptLines = 2;

// Looks like a mistake and is required: three lines stay whole, of four only two are left.
TString CutToFewLines(const TStringList& iLines) {
  if (iLines.GetCount() < cManyLines) return Trim(iLines.GetText());
  TStringList lines;
  for (int i = 0; i < cKeptLines; ++i) lines.Add(iLines.Get(i));
  lines.Add(_resExplorerBarMoreLines);
  return Trim(lines.GetText());
}

bool HasText(const TStringList& iLines) {
  return std::any_of(iLines.Lines().begin(), iLines.Lines().end(),
                     [](const TString& iLine) { return !Trim(iLine).empty(); });
}

}  // namespace

TExplorerBarGroupCategoryDetails::TExplorerBarGroupCategoryDetails(TExplorerBar* iBar)
    : TKK5SkinExplorerGroup(iBar, u"TExplorerBarGroupCategoryDetails",
                            _resExplorerBarGroupCategory),
      FEdit(MakeIntf<TCommonExplorerBarLink>(cEmptyGuid, 0, _resExplorerBarCategoryEdit,
                                             CreateBmp({}, cExplorerbandbarBitmapEdit))),
      FUpdate(MakeIntf<TCommonExplorerBarLink>(cEmptyGuid, 0, _resExplorerBarCategoryUpdate,
                                               CreateBmp({}, cExplorerbandbarBitmapRefresh))),
      FName(
          MakeIntf<TCommonExplorerBarCaptionAndValue>(cEmptyGuid, 0, _resExplorerBarCategoryName)),
      FCount(
          MakeIntf<TCommonExplorerBarCaptionAndValue>(cEmptyGuid, 0, _resExplorerBarCategoryCount)),
      FDescriptionTitle(
          MakeIntf<TCommonExplorerBarText>(cEmptyGuid, 0, _resExplorerBarCategoryDescription)),
      FDescription(MakeIntf<TCommonExplorerBarText>()) {
  using TSelf = TExplorerBarGroupCategoryDetails;
  FEdit->SetOnClick(TNotifyEvent::Of<&TSelf::DoClickEdit>(this));
  FUpdate->SetOnClick(TNotifyEvent::Of<&TSelf::DoClickUpdate>(this));
  FDescription->SetWordWrap(true);
  AddItem(FEdit);
  AddItem(FUpdate);
  AddItem(MakeIntf<TCommonExplorerBarSeparator>());
  AddItem(FName);
  AddItem(FCount);
  AddItem(FDescriptionTitle);
  AddItem(FDescription);
  SetSelection(nullptr, false);
}

TExplorerBarGroupCategoryDetails::~TExplorerBarGroupCategoryDetails() {
  FEdit->SetOnClick({});
  FUpdate->SetOnClick({});
}

void TExplorerBarGroupCategoryDetails::SetSelection(TWatchlistCategory* iCategory,
                                                    bool iCanUpdate) {
  FCategory = iCategory;
  const TUpdating updating(*this);
  if (FCategory != nullptr) return ShowCategory(iCanUpdate);
  const std::initializer_list<IExplorerBarItem*> all = {
      FEdit.Get(),  FUpdate.Get(),           FName.Get(),
      FCount.Get(), FDescriptionTitle.Get(), FDescription.Get()};
  for (IExplorerBarItem* item : all) item->SetVisible(false);
}

// Each property is set once, to what it is to be in the end: an equal value is no change.
void TExplorerBarGroupCategoryDetails::ShowCategory(bool iCanUpdate) {
  FName->SetValue(FCategory->Name());
  FName->SetVisible(true);
  const int count = FCategory->GetItemCount(true);
  FCount->SetValue(count == 0 ? TString(_resExplorerBarNone) : IntToStr(count));
  FCount->SetVisible(true);
  const bool hasDescription = HasText(FCategory->Description());
  FDescriptionTitle->SetVisible(hasDescription);
  FDescription->SetVisible(hasDescription);
  FDescription->SetCaption(CutToFewLines(FCategory->Description()));
  FEdit->SetVisible(!SameGuid(FCategory->Id(), cEmptyGuid));
  FUpdate->SetVisible(iCanUpdate);
}

void TExplorerBarGroupCategoryDetails::DoClickEdit(TObject* /*Sender*/) {
  if (FOnClickEdit) FOnClickEdit(FCategory);
}

void TExplorerBarGroupCategoryDetails::DoClickUpdate(TObject* /*Sender*/) {
  if (FOnClickUpdate) FOnClickUpdate(FCategory);
}

}  // namespace kk
