#pragma once

#include <vector>

#include "host/contract/IWatchlistVisualization.h"
#include "sources/page/TPageList.h"
#include "sources/page/TPageUpdate.h"

namespace kk {

/// The list of this source in the section of the watch list, and its texts. It answers the queries
/// for its results (ISearchResults) and for the refresh of the source, too. Main thread.
class TPageVisualization : public TInterfaced<IWatchlistVisualization> {
 public:
  explicit TPageVisualization(TIntf<TPageUpdate> iUpdate);

  TString GetCaption() const override;
  TString GetMenuCaption() const override;
  TBitmap GetImage() const override;
  TBitmap GetImageSelected() const override;
  TIntf<IInterfaceList> GetSubVisualizations() const override { return {}; }
  TIntf<IIntegrationInfo> GetIntegrationInfo() const override;
  void SetContainer(TPanel* iPanel) override { FList.SetContainer(iPanel); }
  void AddExtensions(const TIntf<IInterfaceList>& iExtensions) override {
    FList.AddExtensions(iExtensions);
  }
  void AddExtension(const TIntf<IInterface>& iExtension) override {
    FList.AddExtension(iExtension);
  }
  void SetResults(const TIntf<IInterfaceList>& iResults) override { FList.SetResults(iResults); }
  void RemoveResults(const TIntf<IInterfaceList>& iResults) override {
    FList.RemoveResults(iResults);
  }
  void SelectResults(const TIntf<IInterfaceList>& iResults) override {
    FList.SelectResults(iResults);
  }
  void RefreshResult(const TIntf<ISearchResult>& iResult) override { FList.RefreshResult(iResult); }
  TIntf<IReminderText> GetReminderText(uint8_t iKind, const TIntf<ISearchResult>& iResult) override;
  TIntf<ISearchResult> CreateSearchResultFromCmdLine(TStringView iValue) override;
  void ShowList() override { FVisible = true; }
  void HideList() override { FVisible = false; }
  void ReleaseList() override { FList.ReleaseList(); }
  void ReleaseListData() override;

  bool IsVisible() const { return FVisible; }
  TPageList& List() { return FList; }
  /// Drops everything that others put in, at the end of the program.
  void Close();

 protected:
  bool QueryDelegated(const TGuid& iIid, void** oInterface) override;

 private:
  TIntf<TPageUpdate> FUpdate;
  TPageList FList;
  bool FVisible = false;
};

}  // namespace kk
