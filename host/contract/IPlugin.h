#pragma once

#include <cstdint>

#include "host/base/TString.h"
#include "host/contract/IApplication.h"

namespace kk {

/// What a plug-in's kind is; the meaning lies in the host.
enum class TGroupIdentification : int {};

/// A set of up to 32 attributes, bit n for attribute n; the meaning lies in the host.
using TPluginAttributes = uint32_t;

/// A plug-in as the host knows it. Main thread.
class IPlugin : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{943EC657-2828-4CC5-9250-E529D41E34CD}");

  virtual TGuid GetId() const = 0;
  virtual TGroupIdentification GetGroup() const = 0;
  virtual TPluginAttributes GetAttributes() const = 0;
  virtual TString GetSignature() const = 0;
  virtual TString GetDescription() const = 0;
  virtual TString GetLongDescription() const = 0;
  /// Called once, when every package is loaded and the integrations are exchanged. An exception
  /// means that the plug-in can't be used.
  virtual void Initialize(const TIntf<IApplication>& iApplication) = 0;
  /// Called once at the end; after it the plug-in can't be initialised again.
  virtual void Uninitialize() = 0;
  /// ioAllowed can be set to false to keep the program from going to the tray.
  virtual void MinimizeToTrayQuery(bool& ioAllowed) = 0;
  virtual void MinimizeToTray() = 0;
  virtual void RestoreFromTray() = 0;
  /// The host's whole command line.
  virtual void ProcessCdmLineParams(TStringView iParamsAsStr) = 0;
};

}  // namespace kk
