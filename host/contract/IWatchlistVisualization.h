#pragma once

#include "host/base/IInterfaceList.h"
#include "host/contract/IIntegrationInfo.h"
#include "host/contract/IReminderText.h"
#include "host/contract/ISearchResult.h"
#include "host/contract/TBitmap.h"

namespace kk {

class TPanel;

inline constexpr TGuid IID_WatchlistVisualization =
    GuidLiteral("{F860A09B-FBEA-472C-B6E8-2BD6018523F0}");

/// The list view of a source. A source without one has no tab and takes no part in "-rem". Main
/// thread.
class IWatchlistVisualization : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = IID_WatchlistVisualization;

  /// Caption of the tab head, and of the source in the tabs' overflow menu.
  virtual TString GetCaption() const = 0;
  virtual TString GetMenuCaption() const = 0;
  virtual TBitmap GetImage() const = 0;
  virtual TBitmap GetImageSelected() const = 0;
  /// Further objects to show; empty for none.
  virtual TIntf<IInterfaceList> GetSubVisualizations() const = 0;
  virtual TIntf<IIntegrationInfo> GetIntegrationInfo() const = 0;
  /// The panel that hosts the list; borrowed, null takes it back.
  virtual void SetContainer(TPanel* iPanel) = 0;
  /// Registers all that another plug-in's GetIntegrations returned.
  virtual void AddExtensions(const TIntf<IInterfaceList>& iExtensions) = 0;
  /// Registers an object with INotifications, IContextMenuExtender or IAdditionalColumns.
  virtual void AddExtension(const TIntf<IInterface>& iExtension) = 0;
  virtual void SetResults(const TIntf<IInterfaceList>& iResults) = 0;
  virtual void RemoveResults(const TIntf<IInterfaceList>& iResults) = 0;
  virtual void SelectResults(const TIntf<IInterfaceList>& iResults) = 0;
  /// Redraws the row of a refreshed result.
  virtual void RefreshResult(const TIntf<ISearchResult>& iResult) = 0;
  /// iKind: 0 for SMS, 1 for e-mail, 2 for the window, 3 for the calendar.
  virtual TIntf<IReminderText> GetReminderText(uint8_t iKind,
                                               const TIntf<ISearchResult>& iResult) = 0;
  /// Tries to turn the value of a "-rem" parameter into a result; empty if it can't.
  virtual TIntf<ISearchResult> CreateSearchResultFromCmdLine(TStringView iValue) = 0;
  virtual void ShowList() = 0;
  virtual void HideList() = 0;
  /// Both are called, in this order, when a tab is destroyed.
  virtual void ReleaseList() = 0;
  virtual void ReleaseListData() = 0;
};

}  // namespace kk
