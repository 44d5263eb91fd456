#include "host/options/TframOptionsBase.h"

#include "host/common/TKKIniFile.h"
#include "host/controls/TForm.h"
#include "host/controls/TfrmMessageDlg.h"

namespace kk {

void TframOptionsBase::Hold(std::initializer_list<TOptionsField*> iFields,
                            std::initializer_list<TOptionsSecret*> iSecrets) {
  FFields = iFields;
  FSecrets = iSecrets;
}

void TframOptionsBase::LoadSettings() {
  for (TOptionsField* field : FFields) field->Load();
  for (TOptionsSecret* secret : FSecrets) secret->Load();
}

bool TframOptionsBase::ValidateSettings(TString& oMessage, TControl*& oControl) {
  oMessage.clear();
  oControl = nullptr;
  for (TOptionsField* field : FFields) {
    if (!field->Validate(oMessage, oControl)) return false;
  }
  return true;
}

void TframOptionsBase::SaveSettings() {
  for (TOptionsField* field : FFields) field->Save();
  for (TOptionsSecret* secret : FSecrets) secret->Save();
}

bool TframOptionsBase::SaveForTrial() {
  TString message;
  TControl* control = nullptr;
  if (!ValidateSettings(message, control)) {
    MessageDlg(message, TMsgDlgType::mtWarning, {TMsgDlgBtn::mbOK});
    if (TForm* form = Form()) form->SetFocusedControl(control);
    return false;
  }
  SaveSettings();
  IniFile().NotifyChanged();
  return true;
}

}  // namespace kk
