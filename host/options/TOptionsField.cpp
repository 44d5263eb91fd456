#include "host/options/TOptionsField.h"

#include "host/base/Exception.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/delivery/TCommunicationCheck.h"

namespace kk {

namespace {

constexpr TStringView cAddressKey = u"EMail";

}  // namespace

TOptionsField::TOptionsField(TPanel& ioFrame, TStringView iName, TStringView iCaption,
                             TStringView iKey, TStringView iComplaint)
    : TOptionsRow(ioFrame, iName, iCaption, iKey), FComplaint(iComplaint) {}

TString TOptionsField::Stored() const { return IniFile().ReadString(cSection, Key(), {}); }

void TOptionsField::Load() { Edit.SetText(Stored()); }

bool TOptionsField::Validate(TString& oMessage, TControl*& oControl) {
  try {
    TCommunicationCheck::Value(Key(), Edit.Text());
  } catch (const EConvertError&) {
    oMessage = FComplaint;
    oControl = &Edit;
    return false;
  }
  return true;
}

void TOptionsField::Save() {
  const TString value = TCommunicationCheck::Value(Key(), Edit.Text());
  if (Key() == cAddressKey) {
    TIniFileSectionCommunication().SetEMail(value);
  } else if (value.empty()) {
    IniFile().DeleteKey(cSection, Key());
  } else {
    IniFile().WriteString(cSection, Key(), value);
  }
  Edit.SetText(value);
}

}  // namespace kk
