#pragma once

#include <memory>

#include "host/controls/TClickControl.h"

namespace kk {

/// An entry of a menu, or the menu itself, with the entries of its sub-menu, which it owns.
/// Captions may be names that users gave, so "&" is a letter of them like any other.
class TMenuItem : public TClickControl {
 public:
  /// The caption of a line between entries.
  static constexpr TStringView cSeparator = u"-";

  explicit TMenuItem(TStringView iCaption = {}) : TClickControl(nullptr, {}, iCaption) {}
  ~TMenuItem() override;

  /// An entry that stands for something may be called so, too, and is none.
  bool IsSeparator() const { return Caption() == cSeparator && FTag == nullptr; }
  bool Checked() const { return FChecked; }
  void SetChecked(bool iChecked) { SetValue(FChecked, iChecked); }
  /// A check is drawn as the choice of one among several.
  bool Radio() const { return FRadio; }
  void SetRadio(bool iRadio) { SetValue(FRadio, iRadio); }
  /// What a double click on the menu's subject does; shown bold.
  bool Default() const { return FDefault; }
  void SetDefault(bool iDefault) { SetValue(FDefault, iDefault); }

  /// What is told of the entry while the pointer is on it; empty for nothing.
  const TString& Hint() const { return FHint; }
  void SetHint(TStringView iHint) { SetValue(FHint, iHint); }
  /// The keys that click the entry without the menu: "Shift", "Ctrl" and "Alt", each with "+"
  /// behind it, and the key's English name, as in "Shift+Ctrl+Del"; empty for none.
  const TString& ShortCut() const { return FShortCut; }
  void SetShortCut(TStringView iShortCut) { SetValue(FShortCut, iShortCut); }
  /// What the entry stands for in the eyes of its maker; borrowed, null for nothing.
  TObject* Tag() const { return FTag; }
  void SetTag(TObject* iTag) { FTag = iTag; }

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
  bool FRadio = false;
  bool FDefault = false;
  TString FHint;
  TString FShortCut;
  TObject* FTag = nullptr;
};

}  // namespace kk
