#include "host/common/KKDat.h"

#include "host/common/TIniFileSectionCommunication.h"

namespace kk {

TString TKKDat::SenderAddress() const { return TIniFileSectionCommunication().GetEMailFrom(); }

TKKDat KKDat() { return {}; }

}  // namespace kk
