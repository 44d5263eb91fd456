#pragma once

#include <unordered_map>

#include "host/base/TDelegate.h"
#include "model/TLstWatchlistCategory.h"
#include "model/TLstWatchlistIntegration.h"

namespace kk {

class TLstRemindItem;

/// Reads the watch list file. Descendants specialise it through its virtual operations, which stand
/// here in the order of their use. It never touches the file. docs/format.md tells the format. Main
/// thread.
class TWatchlistFileLoader : public TObject {
 public:
  explicit TWatchlistFileLoader(TStringView iFileName) : FFileName(iFileName) {}

  const TString& FileName() const { return FFileName; }
  /// Raised before each record and within and between what else takes its time, so that who waits
  /// for LoadFromFile can let the main loop turn. What it raises ends the load as a failure.
  void SetOnStep(TNotifyEvent iEvent) { FOnStep = iEvent; }

 protected:
  /// Told whether the file has categories; that it has none is a failure.
  virtual void FoundCategories(bool iFound);
  /// Told when the reminders are read.
  virtual void FoundRemindItems() {}
  /// Told when both streams of a source are read.
  virtual void FoundIntegration(const TGuid& /*iId*/) {}
  /// Appends the category for everything that belongs nowhere else.
  virtual void AddEmptyCategory(TLstWatchlistCategory& ioLst);

  /// 0 if there is no such entry. Raises EConvertError for a text that is no number.
  virtual int LoadFileVersion();
  virtual void LoadRemindItems(TLstRemindItem& ioLst, bool iDecodeUTF8);
  virtual void LoadCategories(TLstWatchlistCategory& ioLst, bool iDecodeUTF8);
  /// Puts the source's items into the tree. They come to stand in the reverse order of the stream.
  virtual void LoadIntegration(const TIntf<IWatchlistIntegration>& iIntegration,
                               TLstWatchlistCategory& ioLstCategory, bool iDecodeUTF8);

 public:
  /// Answers whether the load went through; a failure is logged. After it the categories are the
  /// catch-all category alone, and reminders read until then stay in their list. The record of each
  /// source that the file holds counts as unchanged, unless it was changed at a step.
  virtual bool LoadFromFile(TLstWatchlistCategory& ioLstCategory, TLstRemindItem& ioLstRemindItem,
                            const TLstWatchlistIntegration& iLstIntegration);

 private:
  using TChangeCounts = std::unordered_map<const TWatchlistIntegration*, uint64_t>;

  void Step();
  void AttachSearchResults(const TLstWatchlistItem& iItems, const TIntf<IInterfaceList>& iResults);
  void PlaceItems(TLstWatchlistItem& ioItems, const TIntf<IWatchlistIntegration>& iIntegration,
                  const TLstWatchlistCategory& iTree);
  void LoadStreams(TLstWatchlistCategory& ioLstCategory, TLstRemindItem& ioLstRemindItem,
                   const TLstWatchlistIntegration& iLstIntegration);
  void LoadIntegrations(TLstWatchlistCategory& ioLstCategory,
                        const TLstWatchlistIntegration& iLstIntegration,
                        const TChangeCounts& iBefore, bool iDecodeUTF8);
  bool LoadsOlderVersion();

  TString FFileName;
  TNotifyEvent FOnStep;
};

}  // namespace kk
