#pragma once

#include <functional>

#include "apps/cli/TCliJson.h"

namespace kk {

/// The watch list as lines of text for a terminal, branches drawn with lines.
class TCliTreeText {
 public:
  using TValues = std::vector<std::pair<TString, TString>>;
  /// What the source of this id tells of a result, title and value.
  using TTell = std::function<TValues(const TGuid&, const TIntf<ISearchResult>&)>;

  explicit TCliTreeText(TTell iTell) : FTell(std::move(iTell)) {}

  /// The whole tree; each item with the first of its values, its end and its reminder.
  std::vector<TString> Tree(const TWatchlistInfo& iTree);
  /// One item with all that is known of it.
  static std::vector<TString> Item(const TCliItemDetails& iDetails);

 private:
  void AddCategory(const TWatchlistCategoryInfo& iCategory, const TString& iIndent, bool iLast);
  void AddGroup(const TWatchlistGroupInfo& iGroup, const TString& iIndent, bool iLast);
  void AddItem(const TWatchlistItemInfo& iItem, const TGuid& iSource, const TString& iIndent,
               bool iLast);
  TString Facts(const TWatchlistItemInfo& iItem, const TGuid& iSource) const;

  TTell FTell;
  const TWatchlistInfo* FTree = nullptr;
  std::vector<TString> FLines;
};

}  // namespace kk
