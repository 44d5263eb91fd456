#include "apps/cli/TCliShow.h"

#include <algorithm>

#include "apps/cli/TCliJson.h"
#include "apps/cli/TCliLookup.h"
#include "apps/cli/TCliTreeText.h"

namespace kk {

void TCliShow::List(bool iAsJson) {
  const TWatchlistInfo tree = FContext.Plugins.List().GetTree();
  if (iAsJson) {
    FContext.Console.Print(FromUtf8(TCliJson::Tree(tree)));
    return;
  }
  TCliTreeText text([this](const TGuid& iSource, const TIntf<ISearchResult>& iResult) {
    return FContext.Plugins.Details(iSource, iResult);
  });
  for (const TString& line : text.Tree(tree)) FContext.Console.Print(line);
}

void TCliShow::Item(TStringView iName, bool iAsJson) {
  const TWatchlistInfo tree = FContext.Plugins.List().GetTree();
  const TCliLookup lookup(tree);
  TCliItemDetails details;
  const TWatchlistItemInfo& item = lookup.Item(iName);
  details.Item = item;
  details.Category = lookup.PathOf(item);
  if (const TWatchlistGroupInfo* const group = lookup.GroupOf(item)) {
    details.Source = group->Name;
    details.Values = FContext.Plugins.Details(group->PluginId, item.SearchResult);
  }
  const auto reminder = std::ranges::find(tree.Reminders, item.Id, &TWatchlistReminderInfo::Id);
  if (reminder != tree.Reminders.end()) details.Reminder = &*reminder;
  if (iAsJson) {
    FContext.Console.Print(FromUtf8(TCliJson::Item(details)));
    return;
  }
  for (const TString& line : TCliTreeText::Item(details)) FContext.Console.Print(line);
}

}  // namespace kk
