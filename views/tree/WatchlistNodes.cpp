#include "views/tree/WatchlistNodes.h"

#include "persistence/TWatchlistHandler.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"
#include "reminders/TLstRemindItemSync.h"

namespace kk {

namespace {

constexpr TStringView cLineBreak = u"\r\n";
constexpr int cHintLines = 3;

enum class TNodeRank { nrEmpty = 0, nrUnassigned = 5, nrCategory = 10, nrGroup = 20, nrItem = 30 };

template <class T>
T* ObjectAt(const TVirtualNode* iNode) {
  return iNode == nullptr ? nullptr : dynamic_cast<T*>(iNode->Object());
}

struct TSortKey {
  TNodeRank Rank;
  TString Text;
};

TSortKey SortKeyOf(const TVirtualNode& iNode) {
  if (const auto* item = ItemAt(&iNode)) return {TNodeRank::nrItem, item->GetName()};
  if (const auto* group = GroupAt(&iNode)) return {TNodeRank::nrGroup, group->GetName()};
  const auto* category = CategoryAt(&iNode);
  if (category == nullptr) return {TNodeRank::nrEmpty, {}};
  if (IsUnassigned(category)) return {TNodeRank::nrUnassigned, {}};
  return {TNodeRank::nrCategory, category->Name()};
}

TString WithCount(TStringView iName, int iCount) {
  return iCount > 0 ? Format(u"%s (%d)", {iName, iCount}) : TString(iName);
}

// A blank line is an empty text; it divides what follows from what stands there already.
void AddLine(TString& ioHint, TStringView iLine) {
  if (!ioHint.empty()) ioHint += cLineBreak;
  ioHint += iLine;
}

void AddDescription(TString& ioHint, const TStringList& iLines) {
  if (iLines.GetCount() == 0) return;
  AddLine(ioHint, {});
  for (int i = 0; i < iLines.GetCount(); ++i) {
    AddLine(ioHint, i < cHintLines ? TStringView(iLines.Get(i)) : u"...");
    if (i == cHintLines) return;
  }
}

TString RemindTypeLine(const TRemindItem& iReminder) {
  const TRemindTypes types = iReminder.RemindTypes();
  const auto type = types.Highest();
  TString line(type ? RemindTypeText(*type) : TStringView());
  if (iReminder.LstDetails().GetCount() > 1 && types.Has(rtSound)) {
    line.append(u" + ").append(RemindTypeText(rtSound));
  }
  return line;
}

void AddReminder(TString& ioHint, const TGuid& iSearchResultId) {
  const auto reminder = Handler()->GetLstRemind().CloneItemBySearchResultId(iSearchResultId);
  if (!reminder) return;
  AddLine(ioHint, {});
  AddLine(ioHint, _resHintReminder);
  AddLine(ioHint, RemindTypeLine(*reminder));
  AddLine(ioHint, Format(_resHintReminderTime, {LongDateToStr(reminder->RemindTime()),
                                                LongTimeToStr(reminder->RemindTime())}));
}

TString GroupHint(const TWatchlistPlugin& iGroup) {
  const int count = iGroup.LstItem().GetCount();
  TString hint = iGroup.GetName();
  AddLine(hint, {});
  AddLine(hint, count == 1 ? TString(_resHintOneItem) : Format(_resHintItems, {count}));
  return hint;
}

TString ItemHint(const TWatchlistItem& iItem) {
  TString hint = iItem.GetName();
  AddReminder(hint, iItem.SearchResultId());
  AddDescription(hint, iItem.Description());
  return hint;
}

}  // namespace

TWatchlistCategory* CategoryAt(const TVirtualNode* iNode) {
  return ObjectAt<TWatchlistCategory>(iNode);
}

TWatchlistPlugin* GroupAt(const TVirtualNode* iNode) { return ObjectAt<TWatchlistPlugin>(iNode); }

TWatchlistItem* ItemAt(const TVirtualNode* iNode) { return ObjectAt<TWatchlistItem>(iNode); }

TWatchlistCategory* CategoryOfNode(const TVirtualNode* iNode) {
  if (ItemAt(iNode) != nullptr) iNode = iNode->Parent();
  if (GroupAt(iNode) != nullptr) iNode = iNode->Parent();
  return CategoryAt(iNode);
}

bool IsUnassigned(const TWatchlistCategory* iCategory) {
  return iCategory != nullptr && SameGuid(iCategory->Id(), cEmptyGuid);
}

TString NodeText(const TVirtualNode& iNode, TNodeCounts iCounts) {
  const bool counts = iCounts.Own || iCounts.Recursive;
  if (const auto* item = ItemAt(&iNode)) return item->GetName();
  if (const auto* group = GroupAt(&iNode)) {
    return WithCount(group->GetName(), counts ? group->LstItem().GetCount() : 0);
  }
  if (const auto* category = CategoryAt(&iNode)) {
    return WithCount(category->Name(), counts ? category->GetItemCount(iCounts.Recursive) : 0);
  }
  return TString(_resRootNodeName);
}

TString NodeHint(const TVirtualNode& iNode) {
  if (const auto* item = ItemAt(&iNode)) return ItemHint(*item);
  if (const auto* group = GroupAt(&iNode)) return GroupHint(*group);
  const auto* category = CategoryAt(&iNode);
  if (category == nullptr) return {};
  TString hint = category->Name();
  AddDescription(hint, category->Description());
  return hint;
}

int NodeImage(const TVirtualNode& iNode) {
  if (ItemAt(&iNode) != nullptr || GroupAt(&iNode) != nullptr) return -1;
  return iNode.Expanded() ? 1 : 0;
}

std::vector<TBitmap> NodeImages() {
  return {{TString(cCategoryImageClosed)}, {TString(cCategoryImageOpen)}};
}

int CompareNodes(const TVirtualNode& iA, const TVirtualNode& iB) {
  const TSortKey a = SortKeyOf(iA);
  const TSortKey b = SortKeyOf(iB);
  if (a.Rank != b.Rank) return a.Rank < b.Rank ? -1 : 1;
  return CompareLocaleText(a.Text, b.Text);
}

}  // namespace kk
