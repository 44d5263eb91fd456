#pragma once

#include <vector>

#include "host/contract/IWatchlistVisualization.h"
#include "sources/page/TPageResults.h"

namespace kk {

/// The list view of this source as far as it needs no screen: results, selection, extensions and
/// texts. It draws nothing yet. Main thread.
class TPageVisualization : public TInterfaced<IWatchlistVisualization> {
 public:
  TPageVisualization();

  TString GetCaption() const override;
  TString GetMenuCaption() const override;
  TBitmap GetImage() const override;
  TBitmap GetImageSelected() const override;
  TIntf<IInterfaceList> GetSubVisualizations() const override { return {}; }
  TIntf<IIntegrationInfo> GetIntegrationInfo() const override;
  void SetContainer(TPanel* iPanel) override;
  void AddExtensions(const TIntf<IInterfaceList>& iExtensions) override;
  /// One with INotifications is told of the results and of each change of the selection.
  void AddExtension(const TIntf<IInterface>& iExtension) override;
  void SetResults(const TIntf<IInterfaceList>& iResults) override;
  void RemoveResults(const TIntf<IInterfaceList>& iResults) override;
  void SelectResults(const TIntf<IInterfaceList>& iResults) override;
  void RefreshResult(const TIntf<ISearchResult>& iResult) override;
  TIntf<IReminderText> GetReminderText(uint8_t iKind, const TIntf<ISearchResult>& iResult) override;
  TIntf<ISearchResult> CreateSearchResultFromCmdLine(TStringView iValue) override;
  void ShowList() override { FVisible = true; }
  void HideList() override { FVisible = false; }
  /// Tells the extensions that the view closes.
  void ReleaseList() override;
  /// Drops the results, and the extensions that came with the container; those from before, which
  /// nobody adds again, stay.
  void ReleaseListData() override;

  bool IsVisible() const { return FVisible; }
  const TIntf<TPageResults>& Results() const { return FResults; }
  const std::vector<TIntf<IInterface>>& Extensions() const { return FExtensions; }
  /// Drops everything that others put in, at the end of the program.
  void Close();

 private:
  void TellSelectionChanged();

  TIntf<TPageResults> FResults;
  std::vector<TIntf<IInterface>> FExtensions;
  size_t FLastingExtensions = 0;
  TPanel* FContainer = nullptr;
  bool FVisible = false;
};

}  // namespace kk
