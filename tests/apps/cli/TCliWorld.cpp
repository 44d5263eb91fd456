#include "TCliWorld.h"

namespace kk {

TCliWorld::TCliWorld()
    : FFormsBefore(SetFormHost(&Forms)),
      FShop(MakeIntf<TFakeSourcePlugin>(u"Fakeshop")),
      FList(MakeIntf<TFakeWatchlistPlugin>()) {
  kk::Plugins().Add(FList);
  kk::Plugins().Add(FShop);
}

void TCliWorld::Start() {
  Plugins.Find();
  Plugins.Initialize(MakeIntf<TCliApplication>(Show));
}

TCliWorld::~TCliWorld() {
  Plugins.Uninitialize();
  kk::Plugins().Clear();
  SetFormHost(FFormsBefore);
}

}  // namespace kk
