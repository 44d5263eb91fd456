#pragma once

#include "host/contract/ISearchResult.h"
#include "host/contract/TBitmap.h"

namespace kk {

/// A link of a panel: what the bar shows and what a click does. Main thread.
class IExplorerBarItem : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{A8372A72-669F-41DD-8F29-DA8F8C2894CA}");

  virtual TGuid GetId() const = 0;
  virtual int GetSortOrder() const = 0;
  virtual TString GetCaption() const = 0;
  virtual TBitmap GetImage() const = 0;
  virtual bool GetVisible() const = 0;
  virtual void SetVisible(bool iVisible) = 0;
  virtual void Click() = 0;
};

/// A panel of the explorer bar. Main thread.
class IExplorerBarPanel : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{CE608A95-7458-44D2-810D-6CFE0D63E9D1}");

  virtual TGuid GetId() const = 0;
  virtual void Add(const TIntf<IExplorerBarItem>& iItem) = 0;
  virtual void Append() = 0;
};

class IExplorerBar;

inline constexpr TGuid IID_ExplorerBarExtender =
    GuidLiteral("{C458FD57-E7CA-4021-ACFA-01B039CC1F8D}");

/// Entries in the explorer bar of a result view. Main thread.
class IExplorerBarExtender : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = IID_ExplorerBarExtender;

  virtual void AddPanels(IExplorerBar* iExplorerBar) = 0;
  virtual void DeletePanels(IExplorerBar* iExplorerBar) = 0;
  virtual void AddItems(const TIntf<IExplorerBarPanel>& iExplorerBarPanel) = 0;
  virtual void DeleteItems(const TIntf<IExplorerBarPanel>& iExplorerBarPanel) = 0;
  virtual void BeforeClick(const TIntf<ISearchResult>& iSearchResult, const TGuid& iItemId) = 0;
};

}  // namespace kk
