#include "views/WatchlistQuestions.h"

#include "host/controls/TfrmKKCommonMessageDlg.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

namespace {

bool AskDelete(TStringView iText, TStringView iYesDescription) {
  return TfrmKKCommonMessageDlg::Display(nullptr, iText, _resConfirmYesDelete, iYesDescription,
                                         _resConfirmNoCancel, _resConfirmCancelled);
}

// iText: with a place for the count.
bool AskEditAll(TStringView iText, int iCount) {
  return TfrmKKCommonMessageDlg::Display(nullptr, Format(iText, {iCount}), _resConfirmYesEditAll,
                                         _resConfirmAllEdited, _resConfirmNoCancel,
                                         _resConfirmCancelled);
}

}  // namespace

bool AskDeleteItems(int iCount) {
  return AskDelete(
      iCount == 1 ? TString(_resConfirmDeleteSingle) : Format(_resConfirmDeleteMultiple, {iCount}),
      _resConfirmItemsDeleted);
}

bool AskDeleteGroup(int iItemCount) {
  const TString text = iItemCount == 0   ? TString(_resConfirmDeleteCategory)
                       : iItemCount == 1 ? TString(_resConfirmDeletePluginOneItem)
                                         : Format(_resConfirmDeletePluginItems, {iItemCount});
  return AskDelete(text, _resConfirmAllDeleted);
}

bool AskDeleteCategory(bool iEmpty) {
  return AskDelete(iEmpty ? _resConfirmDeleteCategory : _resConfirmDeleteCategoryWithContents,
                   _resConfirmAllDeleted);
}

bool AskEditDescriptions(int iCount) { return AskEditAll(_resConfirmEditDescriptions, iCount); }

bool AskEditReminders(int iCount) { return AskEditAll(_resConfirmEditReminders, iCount); }

bool AskDeleteReminder() { return AskDelete(_resConfirmDeleteReminder, _resConfirmItemsDeleted); }

}  // namespace kk
