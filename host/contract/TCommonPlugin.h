#pragma once

#include "host/contract/IPlugin.h"

namespace kk {

/// What every plug-in's class has in common; a plug-in's own class derives from it and lists the
/// interfaces that it implements.
template <class... Interfaces>
class TCommonPlugin : public TInterfaced<Interfaces...> {
 public:
  /// Keeps the application.
  void Initialize(const TIntf<IApplication>& iApplication) override { FApplication = iApplication; }
  /// Drops the application.
  void Uninitialize() override { FApplication = nullptr; }
  void MinimizeToTrayQuery(bool& /*ioAllowed*/) override {}
  void MinimizeToTray() override {}
  void RestoreFromTray() override {}
  void ProcessCdmLineParams(TStringView /*iParamsAsStr*/) override {}
  virtual void InitHelpAgent() {}

 protected:
  const TIntf<IApplication>& Application() const { return FApplication; }

 private:
  TIntf<IApplication> FApplication;
};

}  // namespace kk
