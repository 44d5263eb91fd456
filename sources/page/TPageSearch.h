#pragma once

#include <map>
#include <unordered_map>

#include "host/contract/ISearchSource.h"
#include "sources/page/TPageList.h"
#include "sources/page/TPageUpdate.h"

namespace kk {

/// The search of this source: the pages whose addresses the user gives, each in the list as soon as
/// it is read. A few are read at a time, through the same requests as a refresh. Main thread.
class TPageSearch : public TInterfaced<ISearchSource>, public TObject {
 public:
  /// How many pages are read at a time.
  static constexpr int cAtOnce = 4;
  /// How many pages one search reads.
  static constexpr size_t cMaxPages = 1000;

  explicit TPageSearch(TIntf<TPageUpdate> iUpdate);

  TString GetCaption() const override;
  TBitmap GetImage() const override;
  TBitmap GetImageSelected() const override;
  TString GetPrompt() const override;
  /// The same as that of the source's list in the watch list: what others offer there is offered
  /// here.
  TIntf<IIntegrationInfo> GetIntegrationInfo() const override;
  void SetContainer(TPanel* iPanel) override { FList.SetContainer(iPanel); }
  void AddExtensions(const TIntf<IInterfaceList>& iExtensions) override {
    FList.AddExtensions(iExtensions);
  }
  TIntf<ISearchResults> GetSearchResults() const override { return FList.Results(); }
  /// One address or more a line; see ReadAddresses. Each line of the problem at the end is a
  /// sentence of its own.
  void Search(TStringView iText, TNotifySearchFinished iOnFinished) override;
  void Cancel() override;
  void SetOnSelectionChanged(TNotifyEvent iEvent) override { FList.SetOnSelectionChanged(iEvent); }
  void ReleaseSearch() override;

  /// How many pages wait for their turn.
  int WaitingCount() const { return static_cast<int>(FPages.size() - FNext); }
  TPageList& List() { return FList; }

 protected:
  ~TPageSearch() override;

 private:
  /// One page to read, and the place of its line in the text.
  struct TPage {
    TPageAddress Address;
    int Line = 0;
  };

  void TakeText(TStringView iText);
  void ReadNext();
  void FinishIfDone();
  void DoRead(const TIntf<ISearchResult>& iResult, const TString& iReason);

  TIntf<TPageUpdate> FUpdate;
  TPageList FList;
  bool FSearching = false;
  TNotifySearchFinished FOnFinished;
  std::vector<TPage> FPages;
  size_t FNext = 0;
  std::unordered_map<TGuid, int> FUnderWay;  // the line of each result
  std::multimap<int, TString> FProblems;     // by their lines
};

}  // namespace kk
