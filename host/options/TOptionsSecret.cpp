#include "host/options/TOptionsSecret.h"

#include "host/common/ISecretStore.h"
#include "host/common/TKKIniFile.h"

namespace kk {

TOptionsSecret::TOptionsSecret(TPanel& ioFrame, TStringView iName, TStringView iCaption,
                               TStringView iRemoveCaption, TStringView iKey)
    : TOptionsRow(ioFrame, iName, iCaption, iKey),
      Remove(&Row, u"btn" + TString(iName), iRemoveCaption),
      State(&ioFrame, u"lblState" + TString(iName)) {
  Edit.SetPassword(true);
  Edit.SetOnChange(TNotifyEvent::Of<&TOptionsSecret::EditChange>(this));
  Remove.SetOnClick(TNotifyEvent::Of<&TOptionsSecret::RemoveClick>(this));
}

void TOptionsSecret::Load() {
  FIsStored = !SecretStore().Read(cSection, Key()).empty();
  FIsToGo = false;
  Edit.SetText({});
  ShowState();
}

void TOptionsSecret::Save() {
  if (Edit.Text().empty() && !FIsToGo) return;
  SecretStore().Write(cSection, Key(), Edit.Text());
  FIsStored = !Edit.Text().empty();
  FIsToGo = false;
  Edit.SetText({});
  ShowState();
}

void TOptionsSecret::ShowState() {
  Remove.SetEnabled(FIsStored && !FIsToGo);
  if (!Edit.Text().empty()) return State.SetCaption(u"Wird beim Speichern übernommen.");
  if (FIsToGo) return State.SetCaption(u"Wird beim Speichern entfernt.");
  if (!FIsStored) return State.SetCaption(u"Nicht gespeichert.");
  State.SetCaption(IniFile().HasKey(cSection, Key())
                       ? u"Gespeichert in der Einstellungsdatei, die nur Sie lesen können. "
                         u"Leer heißt: bleibt, wie es ist."
                       : u"Gespeichert im Schlüsselbund. Leer heißt: bleibt, wie es ist.");
}

void TOptionsSecret::RemoveClick(TObject*) {
  FIsToGo = true;
  Edit.SetText({});
  ShowState();
}

void TOptionsSecret::EditChange(TObject*) { ShowState(); }

}  // namespace kk
