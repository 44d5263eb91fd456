#pragma once

#include <cstdint>

#include "host/base/IInterface.h"
#include "host/contract/TBitmap.h"

namespace kk {

class TExplorerBar;
class TKK5SkinExplorerGroup;
class IExplorerBarItem;

/// What the user sees of an item: a link, a text, a caption with a value beside it, or a line
/// between other items.
enum class TExplorerBarItemKind : uint8_t { ikLink, ikText, ikCaptionAndValue, ikSeparator };

/// Who shows an item. Main thread.
class IExplorerBarItemObserver {
 public:
  /// Something of what the item answers is another value.
  virtual void ItemChanged(IExplorerBarItem& iItem) = 0;

 protected:
  ~IExplorerBarItemObserver() = default;
};

/// An item of a panel: what the bar shows and what a click does. Several panels may hold one. Main
/// thread.
class IExplorerBarItem : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{A8372A72-669F-41DD-8F29-DA8F8C2894CA}");

  virtual TGuid GetId() const = 0;
  /// Items stand in this order, from the lowest number to the highest.
  virtual int GetSortOrder() const = 0;
  /// The words of a link or a text as well.
  virtual TString GetCaption() const = 0;
  virtual TBitmap GetImage() const = 0;
  virtual bool GetVisible() const = 0;
  virtual void SetVisible(bool iVisible) = 0;
  /// What a click on a link does. Whether the user can click is the bar's business.
  virtual void Click() = 0;

  virtual TExplorerBarItemKind GetKind() const = 0;
  /// What stands beside the caption; empty for the other kinds.
  virtual TString GetValue() const = 0;
  /// As many lines as the words need instead of one.
  virtual bool GetWordWrap() const = 0;
  /// Borrowed; who is added takes itself out before it dies.
  virtual void AddObserver(IExplorerBarItemObserver& iObserver) = 0;
  virtual void RemoveObserver(IExplorerBarItemObserver& iObserver) = 0;
};

/// A panel of the explorer bar: a group with a title, and items in the order of their sort orders.
/// Main thread.
class IExplorerBarPanel : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{CE608A95-7458-44D2-810D-6CFE0D63E9D1}");

  virtual TGuid GetId() const = 0;
  /// An item that the panel holds already stays where it is, and there is one of it. Of items with
  /// equal sort orders the earlier one stands first.
  virtual void Add(const TIntf<IExplorerBarItem>& iItem) = 0;
  /// Adds every item of the other panel, which keeps them. With the flag what was in this panel
  /// goes first.
  virtual void Append(const TIntf<IExplorerBarPanel>& iPanel, bool iClearBeforeAppending) = 0;

  /// Panels stand in this order, from the lowest number to the highest.
  virtual int GetSortOrder() const = 0;
  virtual int GetCount() const = 0;
  /// An index out of range raises EListError.
  virtual TIntf<IExplorerBarItem> GetItems(int iIndex) const = 0;
  /// No effect for an item that it does not hold.
  virtual void Delete(const TIntf<IExplorerBarItem>& iItem) = 0;
  virtual void Clear() = 0;
  /// What the bar shows of it.
  virtual TKK5SkinExplorerGroup& GetGroup() = 0;
};

/// The column beside a result view. Main thread.
class IExplorerBar : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{1B9A2C57-6E0D-4F0B-9C41-7D2F5A83E6B4}");

  virtual int GetCount() const = 0;
  /// An index out of range raises EListError.
  virtual TIntf<IExplorerBarPanel> GetPanels(int iIndex) const = 0;
  virtual TExplorerBar& GetControl() const = 0;
  /// The first panel with this id; empty if there is none.
  virtual TIntf<IExplorerBarPanel> FindPanelById(const TGuid& iId) const = 0;
  /// In front of the first panel with a higher sort order, else at the end. A panel that the bar
  /// holds already stays where it is.
  virtual void Add(const TIntf<IExplorerBarPanel>& iPanel) = 0;
  /// No effect for a panel that it does not hold.
  virtual void Delete(const TIntf<IExplorerBarPanel>& iPanel) = 0;
  /// Changes between the two, which may lie in one another, are shown at the last EndUpdate.
  virtual void BeginUpdate() = 0;
  virtual void EndUpdate() = 0;
  /// Fills the bar.
  virtual void Init() = 0;
  /// Takes all panels out.
  virtual void Clear() = 0;
};

}  // namespace kk
