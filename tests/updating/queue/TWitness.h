#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/base/Log.h"
#include "tests/support/TFakeSource.h"
#include "updating/queue/TWatchlistItemUpdater.h"

namespace kk {

/// Writes down, in one order, the events of an updater and what goes to the log while it lives:
/// "progress", "added 2", "updater Name ok", "entry Name failed", "log Sender: text".
class TWitness : public TObject, public ILogSink {
 public:
  using TCallback = std::function<void(const TIntf<ISearchResult>&)>;

  TWitness() : FBefore(SetLogSink(this)) {}
  ~TWitness() override { SetLogSink(FBefore); }

  void Watch(TWatchlistItemUpdater& ioUpdater) {
    ioUpdater.SetOnProgress(TNotifyEvent::Of<&TWitness::DoProgress>(this));
    ioUpdater.SetOnAfterAdd(TNotifyEventAfterAdd::Of<&TWitness::DoAfterAdd>(this));
    ioUpdater.SetOnUpdateFinished(TNotifyEventSearchResult::Of<&TWitness::DoUpdater>(this));
  }
  TNotifyEventSearchResult ForEntry() {
    return TNotifyEventSearchResult::Of<&TWitness::DoEntry>(this);
  }

  std::vector<std::string>& Lines() { return FLines; }
  /// The lines that begin with the word.
  std::vector<std::string> Lines(const std::string& iWord) const {
    std::vector<std::string> lines;
    for (const auto& line : FLines) {
      if (line.rfind(iWord + " ", 0) == 0 || line == iWord) lines.push_back(line);
    }
    return lines;
  }
  TObject* LastSender() const { return FLastSender; }

  void SetOnProgress(std::function<void()> iCallback) { FOnProgress = std::move(iCallback); }
  void SetOnAfterAdd(std::function<void()> iCallback) { FOnAfterAdd = std::move(iCallback); }
  void SetOnUpdater(TCallback iCallback) { FOnUpdater = std::move(iCallback); }
  void SetOnEntry(TCallback iCallback) { FOnEntry = std::move(iCallback); }

  void Write(TLogLevel iLevel, TStringView iSender, TStringView iText) override {
    if (iLevel == TLogLevel::llDebug) return;
    FLines.push_back("log " + ToUtf8(iSender) + ": " + ToUtf8(iText));
  }

 private:
  void DoProgress(TObject* iSender) {
    FLastSender = iSender;
    FLines.push_back("progress");
    if (FOnProgress) FOnProgress();
  }
  void DoAfterAdd(TObject* iSender, int iCount) {
    FLastSender = iSender;
    FLines.push_back("added " + std::to_string(iCount));
    if (FOnAfterAdd) FOnAfterAdd();
  }
  void DoUpdater(TObject* iSender, const TIntf<ISearchResult>& iResult, bool iSucceeded) {
    FLastSender = iSender;
    FLines.push_back("updater " + ToUtf8(iResult->GetName()) + (iSucceeded ? " ok" : " failed"));
    if (FOnUpdater) FOnUpdater(iResult);
  }
  void DoEntry(TObject* iSender, const TIntf<ISearchResult>& iResult, bool iSucceeded) {
    FLastSender = iSender;
    FLines.push_back("entry " + ToUtf8(iResult->GetName()) + (iSucceeded ? " ok" : " failed"));
    if (FOnEntry) FOnEntry(iResult);
  }

  std::vector<std::string> FLines;
  TObject* FLastSender = nullptr;
  std::function<void()> FOnProgress;
  std::function<void()> FOnAfterAdd;
  TCallback FOnUpdater;
  TCallback FOnEntry;
  ILogSink* FBefore;
};

/// A source whose refresh is what the test says.
class TFunctionSource : public TFakeSource {
 public:
  using TFunction = std::function<void(const TIntf<ISearchResult>&, TNotifyEventSearchResult)>;
  explicit TFunctionSource(TFunction iFunction)
      : TFakeSource(u"Quelle", NewGuid(), {false, false}), FFunction(std::move(iFunction)) {}

 protected:
  bool QueryDelegated(const TGuid& iIid, void** oInterface) override {
    if (iIid != IID_SearchResultUpdate) return TFakeSource::QueryDelegated(iIid, oInterface);
    return MakeIntf<TUpdate>(FFunction)->QueryInterface(iIid, oInterface);
  }

 private:
  class TUpdate : public TInterfaced<ISearchResultUpdate> {
   public:
    explicit TUpdate(TFunction iFunction) : FFunction(std::move(iFunction)) {}
    void UpdateSearchResult(const TIntf<ISearchResult>& iResult,
                            TNotifyEventSearchResult iOnFinished) override {
      FFunction(iResult, iOnFinished);
    }

   private:
    TFunction FFunction;
  };
  TFunction FFunction;
};

}  // namespace kk
