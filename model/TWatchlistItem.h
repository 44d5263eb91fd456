#pragma once

#include "host/base/TStringList.h"
#include "host/contract/ISearchResult.h"
#include "model/TTreeIndex.h"
#include "model/TTreePlace.h"

namespace kk {

class TLstWatchlistItem;
template <class T, class TSelf>
class TLstTree;

/// One watched article: a search result of its source, and the user's own data for it. Owned by the
/// item list of a group. Main thread.
class TWatchlistItem : public TObject {
 public:
  TWatchlistItem() = default;
  /// Tells the model's root first, so that listeners still see a whole item. Without a root nobody
  /// is told.
  ~TWatchlistItem() override;

  /// May be empty: until one is attached, and for good if the source has none with this id.
  const TIntf<ISearchResult>& SearchResult() const { return FSearchResult; }
  /// Takes over the result's id. A reference that differs from the one stored is stored and told
  /// to the root as added; the same reference again does neither. iResult is not empty: an empty
  /// one raises Exception and changes nothing.
  void SetSearchResult(const TIntf<ISearchResult>& iResult);

  /// The item's identity in every look-up.
  const TGuid& SearchResultId() const { return FSearchResultId; }
  void SetSearchResultId(const TGuid& iId);
  const TGuid& ParentCategoryId() const { return FParentCategoryId; }
  void SetParentCategoryId(const TGuid& iId) { FParentCategoryId = iId; }
  /// Local time of the last refresh; zero when never.
  TDateTime LastUpdateDate() const { return FLastUpdateDate; }
  void SetLastUpdateDate(TDateTime iDate) { FLastUpdateDate = iDate; }
  /// The user's note.
  TStringList& Description() { return FDescription; }
  const TStringList& Description() const { return FDescription; }
  /// Copies the lines.
  void SetDescription(const TStringList& iLines) { FDescription.Assign(iLines); }

  /// The result's name; empty while there is none.
  TString GetName() const;
  /// Whether a refresh makes sense: always without an end time, else until one has taken place
  /// after the end (the end itself counts as before). An item without a result can't be refreshed.
  bool CanUpdate() const;

  /// The owning list in which the item hangs, if it does, and where in it.
  TLstWatchlistItem* List() const { return FPlace.List; }
  const TTreePlace<TLstWatchlistItem>& Place() const { return FPlace; }

 private:
  friend class TLstTree<TWatchlistItem, TLstWatchlistItem>;
  friend class TTreeIndex<TWatchlistItem>;

  TIntf<ISearchResult> FSearchResult;
  TGuid FParentCategoryId;
  TGuid FSearchResultId;
  TDateTime FLastUpdateDate;
  TStringList FDescription;
  TTreePlace<TLstWatchlistItem> FPlace;
  TTreeIndexLink<TWatchlistItem> FIndexLink;
};

}  // namespace kk
