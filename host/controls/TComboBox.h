#pragma once

#include "host/controls/TControl.h"

namespace kk {

/// A list to choose from, with a line of text.
///
/// Text and selection go together: a text that equals an entry (regard to case first, then without)
/// selects it, any other text selects nothing. Of entries with equal texts the selected one stays
/// selected, else the first is.
class TComboBox : public TControl {
 public:
  using TControl::TControl;

  /// Whether the user can type beside choosing; so at first.
  bool Editable() const { return FEditable; }
  void SetEditable(bool iEditable) { SetValue(FEditable, iEditable); }

  const std::vector<TString>& Items() const { return FItems; }
  void AddItem(TStringView iText);
  /// Text and selection go, too.
  void Clear();

  /// -1 if nothing is selected.
  int ItemIndex() const { return FItemIndex; }
  /// Takes over the entry's text; -1 empties it. Any other index out of range raises EListError.
  void SetItemIndex(int iIndex);
  const TString& Text() const { return FText; }
  void SetText(TStringView iText);

  /// The user has chosen an entry; false for an index out of range.
  bool Select(int iIndex);
  /// The user has changed the text to this one.
  bool EnterText(TStringView iText);
  /// On every change by the user, of text or selection.
  void SetOnChange(TNotifyEvent iEvent) { FOnChange = iEvent; }

  bool AcceptsFocus() const override { return true; }

 private:
  int IndexOfText(TStringView iText) const;
  /// False if both are so already.
  bool Put(int iIndex, TStringView iText);

  bool FEditable = true;
  std::vector<TString> FItems;
  int FItemIndex = -1;
  TString FText;
  TNotifyEvent FOnChange;
};

}  // namespace kk
