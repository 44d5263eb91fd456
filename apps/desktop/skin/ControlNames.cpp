#include "apps/desktop/skin/ControlNames.h"

#include <algorithm>

#include "host/controls/TImage.h"
#include "host/controls/TLabel.h"
#include "host/controls/TPanel.h"

namespace kk {

namespace {

TString Plain(TStringView iCaption) {
  TString text;
  for (size_t i = 0; i < iCaption.size(); ++i) {
    if (iCaption[i] == u'&' && ++i == iCaption.size()) break;
    text += iCaption[i];
  }
  return Trim(text);
}

TString TextOfLabel(const TControl* iControl) {
  const auto* const label = dynamic_cast<const TLabel*>(iControl);
  return label != nullptr && label->Visible() ? Trim(label->Caption()) : TString();
}

// The first label in reading order of those in the control, itself included.
TString FirstLabelIn(const TControl& iControl) {
  if (TString text = TextOfLabel(&iControl); !text.empty()) return text;
  for (const TControl* child : iControl.Children()) {
    if (TString text = FirstLabelIn(*child); !text.empty()) return text;
  }
  return {};
}

// A row that begins with a control and not with a label names its controls behind them.
bool NamesBehind(const TPanel& iPanel) {
  if (iPanel.Arrangement() != TArrangement::arRow) return false;
  for (const TControl* child : iPanel.Children()) {
    if (!child->Visible()) continue;
    return child->AcceptsFocus();
  }
  return false;
}

TString NameBySiblings(const TControl& iControl, const TControl& iParent) {
  const auto& siblings = iParent.Children();
  const auto place = std::find(siblings.begin(), siblings.end(), &iControl);
  if (place == siblings.end()) return {};
  TString before;
  for (auto it = place; it != siblings.begin() && before.empty();) before = TextOfLabel(*--it);
  const TString behind = place + 1 != siblings.end() ? TextOfLabel(place[1]) : TString();
  const auto* const panel = dynamic_cast<const TPanel*>(&iParent);
  if (panel != nullptr && NamesBehind(*panel) && !behind.empty()) return behind;
  // There "&" marks the key that leads to the control.
  if (dynamic_cast<const TClickControl*>(&iControl) == nullptr) return Plain(before);
  return place + 1 != siblings.end() ? FirstLabelIn(*place[1]) : TString();
}

}  // namespace

TString NameForReader(const TControl& iControl) {
  const auto captionOf = [](const TControl& iOf) {
    const auto* const captioned = dynamic_cast<const TCaptionControl*>(&iOf);
    return captioned != nullptr ? captioned->Caption() : TString();
  };
  if (dynamic_cast<const TLabel*>(&iControl) != nullptr) return Trim(captionOf(iControl));
  if (TString name = Plain(captionOf(iControl)); !name.empty()) return name;
  if (!iControl.AcceptsFocus()) return {};
  for (const TControl *inner = &iControl, *outer = inner->Parent(); outer != nullptr;
       inner = outer, outer = outer->Parent()) {
    TString name = NameBySiblings(*inner, *outer);
    if (name.empty()) name = Plain(captionOf(*outer));
    if (!name.empty()) return name;
  }
  return {};
}

}  // namespace kk
