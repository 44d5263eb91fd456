#pragma once

#include "host/base/IInterface.h"

namespace kk {

/// Says which plug-in's view is meant when extensions are asked for. Main thread.
class IIntegrationInfo : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{84DD57D5-EFD9-4FF0-BD93-5FC0120F7B5F}");

  virtual TGuid GetId() const = 0;
};

}  // namespace kk
