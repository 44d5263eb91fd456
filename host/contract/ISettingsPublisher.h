#pragma once

#include "host/base/IInterface.h"
#include "host/base/TStringList.h"

namespace kk {

/// A plug-in's preferences as lines key=value, for the exchange between installations. Main thread.
class ISettingsPublisher : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{12AECDD3-C7D9-44A2-BFFE-B27E03BA786E}");

  virtual TString GetSettingsNode() const = 0;
  /// The plug-in's own list, refilled at each call.
  virtual const TStringList& GetSettings() = 0;
  virtual TString GetSettingsName() const = 0;
  virtual void SetSettings(const TStringList& iSettings) = 0;
};

}  // namespace kk
