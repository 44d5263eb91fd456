#include "host/base/IInterface.h"

namespace kk {

namespace {

std::atomic<int64_t> liveObjects{0};

}  // namespace

int64_t LiveObjectCount() { return liveObjects.load(); }

void detail::CountLiveObject(int iDifference) { liveObjects.fetch_add(iDifference); }

}  // namespace kk
