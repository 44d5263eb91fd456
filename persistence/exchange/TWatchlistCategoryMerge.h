#pragma once

#include "host/base/TDelegate.h"
#include "host/base/THashedStringList.h"
#include "model/TLstWatchlistCategory.h"

namespace kk {

/// Takes the structure of imported categories over into the live tree, and remembers which live
/// category each of them has become. Categories are the same if their names are, without regard to
/// case, wherever in the tree they stand. Linear in the categories of both. Main thread.
class TWatchlistCategoryMerge : public TObject {
 public:
  /// The source stays as it is. At depth 0 the live categories are looked at, once: what the merge
  /// makes is not found by it, so that two imported categories of one new name both come in, as
  /// required. One that would stand deeper than TWatchlistCategory::cMaxDepth raises Exception;
  /// what was taken over by then stays.
  void Execute(TLstWatchlistCategory& ioTarget, const TLstWatchlistCategory& iSource, int iDepth);
  void AddTranslatedId(const TGuid& iLiveId, const TGuid& iImportId);
  /// The live id. One that was never translated raises EConvertError.
  TGuid GetNewId(const TGuid& iOriginalId) const;
  /// Raised once for each imported category.
  void SetOnProgress(TNotifyEvent iEvent) { FOnProgress = iEvent; }

 private:
  void DoProgress();
  void FillFlatList(const TLstWatchlistCategory& iTarget);
  TWatchlistCategory& Find(const TWatchlistCategory& iImported, TLstWatchlistCategory& ioTarget);

  THashedStringList FSLIdTranslation;
  TLstWatchlistCategory FFlatList{false};
  THashedStringList FNames;  // those of FFlatList, in its order
  TNotifyEvent FOnProgress;
};

}  // namespace kk
