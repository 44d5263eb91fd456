#include "host/options/TOptionsField.h"

#include "host/base/Exception.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/delivery/TCommunicationCheck.h"

namespace kk {

namespace {

constexpr TStringView cSection = u"Communication";
constexpr TStringView cAddressKey = u"EMail";

}  // namespace

TOptionsField::TOptionsField(TPanel& ioFrame, TStringView iName, TStringView iCaption,
                             TStringView iKey, TStringView iComplaint)
    : Row(&ioFrame, u"pnl" + TString(iName)),
      Label(&Row, u"lbl" + TString(iName), iCaption),
      Edit(&Row, u"edt" + TString(iName)),
      FKey(iKey),
      FComplaint(iComplaint) {
  Row.SetArrangement(TArrangement::arRow);
}

TString TOptionsField::Stored() const { return IniFile().ReadString(cSection, FKey, {}); }

void TOptionsField::Load() { Edit.SetText(Stored()); }

bool TOptionsField::Validate(TString& oMessage, TControl*& oControl) {
  try {
    TCommunicationCheck::Value(FKey, Edit.Text());
  } catch (const EConvertError&) {
    oMessage = FComplaint;
    oControl = &Edit;
    return false;
  }
  return true;
}

void TOptionsField::Save() {
  const TString value = TCommunicationCheck::Value(FKey, Edit.Text());
  if (FKey == cAddressKey) {
    TIniFileSectionCommunication().SetEMail(value);
  } else if (value.empty()) {
    IniFile().DeleteKey(cSection, FKey);
  } else {
    IniFile().WriteString(cSection, FKey, value);
  }
  Edit.SetText(value);
}

}  // namespace kk
