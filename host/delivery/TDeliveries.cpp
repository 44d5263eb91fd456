#include "host/delivery/TDeliveries.h"

#include <utility>

#include "host/common/TFileHelper.h"

namespace kk {

TDeliveries::TDeliveries(TFallback iFallback)
    : FSecretsInstalled(&SetSecretStore, &FSecrets),
      FOutbox(HostFolders().Data + u"/outbox"),
      FEmail(&FOutbox),
      FEmailInstalled(&SetEmailSender, &FEmail),
      FSmsInstalled(&SetSmsSender, &FSms),
      FCalendarInstalled(&SetOutlookFactory, &FCalendar),
      FSoundInstalled(&SetSoundPlayer, &FSound),
      FNotifier(std::move(iFallback)),
      FNotifierInstalled(&SetNotifier, &FNotifier) {}

TDeliveries::~TDeliveries() { Stop(); }

void TDeliveries::StartOutbox() { FOutbox.Start(); }

// The keyring first: the others may be waiting for it.
void TDeliveries::Stop() {
  FSecrets.Stop();
  FEmail.Stop();
  FOutbox.Stop();
  FSms.Stop();
  FCalendar.Stop();
  FSound.Stop();
  FNotifier.Stop();
}

}  // namespace kk
