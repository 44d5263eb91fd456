#pragma once

#include <memory>

#include "host/controls/TClickControl.h"

namespace kk {

/// An entry of a menu, or the menu itself, with the entries of its sub-menu, which it owns.
class TMenuItem : public TClickControl {
 public:
  /// The caption of a line between entries.
  static constexpr TStringView cSeparator = u"-";

  explicit TMenuItem(TStringView iCaption = {}) : TClickControl(nullptr, {}, iCaption) {}
  ~TMenuItem() override;

  bool IsSeparator() const { return Caption() == cSeparator; }
  bool Checked() const { return FChecked; }
  void SetChecked(bool iChecked) { SetValue(FChecked, iChecked); }
  /// What a double click on the menu's subject does; shown bold.
  bool Default() const { return FDefault; }
  void SetDefault(bool iDefault) { SetValue(FDefault, iDefault); }

  int GetCount() const { return static_cast<int>(FItems.size()); }
  /// An index out of range raises EListError.
  TMenuItem& GetItems(int iIndex) const;
  TMenuItem& Add(std::unique_ptr<TMenuItem> iItem);
  /// A new entry at the end.
  TMenuItem& Add(TStringView iCaption, TNotifyEvent iOnClick = {});
  /// Frees the entries. Inside of one's own click it is allowed to free oneself.
  void Clear();

  bool AcceptsFocus() const override { return false; }

 protected:
  /// A separator, and an entry that opens a sub-menu, do nothing by themselves.
  bool Clicked() override { return !IsSeparator() && FItems.empty(); }

 private:
  std::vector<std::unique_ptr<TMenuItem>> FItems;
  bool FChecked = false;
  bool FDefault = false;
};

}  // namespace kk
