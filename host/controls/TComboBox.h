#pragma once

#include "host/controls/TControl.h"

namespace kk {

/// A list to choose from, with a line of text. An entry can have an object attached, which is
/// borrowed.
///
/// Text and selection go together: a text that equals an entry (regard to case first, then without)
/// selects it, any other text selects nothing. Of entries with equal texts the selected one stays
/// selected, else the first is.
class TComboBox : public TControl {
 public:
  struct TEntry {
    TString Text;
    TObject* Object = nullptr;
    friend bool operator==(const TEntry&, const TEntry&) = default;
  };

  using TControl::TControl;

  /// Whether the user can type beside choosing; so at first.
  bool Editable() const { return FEditable; }
  void SetEditable(bool iEditable) { SetValue(FEditable, iEditable); }

  const std::vector<TEntry>& Items() const { return FItems; }
  void AddItem(TStringView iText, TObject* iObject = nullptr);
  /// Text and selection go, too.
  void Clear();
  /// The first entry with this object; -1 if there is none.
  int IndexOfObject(const TObject* iObject) const;

  /// -1 if nothing is selected.
  int ItemIndex() const { return FItemIndex; }
  /// Takes over the entry's text; -1 empties it. Any other index out of range raises EListError.
  void SetItemIndex(int iIndex);
  /// The selected entry's object; null if there is none.
  TObject* SelectedObject() const;
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
  std::vector<TEntry> FItems;
  int FItemIndex = -1;
  TString FText;
  TNotifyEvent FOnChange;
};

}  // namespace kk
