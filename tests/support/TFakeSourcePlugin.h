#pragma once

#include "host/contract/IMultiThreadPlugin.h"
#include "host/contract/ISearchResultConverter.h"
#include "host/contract/TCommonPlugin.h"
#include "host/contract/TPluginIntegration.h"
#include "tests/support/TFakeSource.h"

namespace kk {

/// A plug-in with a fake source, which tells two values of a result.
class TFakeSourcePlugin
    : public TCommonPlugin<IMultiThreadPlugin, IPluginIntegration, ISearchResultConverter> {
 public:
  explicit TFakeSourcePlugin(TStringView iName, TFakeAbilities iAbilities = {});

  TGuid GetId() const override { return FSource->GetId(); }
  TGroupIdentification GetGroup() const override { return TGroupIdentification{1}; }
  TPluginAttributes GetAttributes() const override { return 0; }
  TString GetSignature() const override { return {}; }
  TString GetDescription() const override { return FSource->GetName(); }
  TString GetLongDescription() const override { return {}; }
  void Initialize(const TIntf<IApplication>& iApplication) override;
  void Uninitialize() override;
  void ProcessCdmLineParams(TStringView iParamsAsStr) override { CommandLine = iParamsAsStr; }

  int ThreadCount() const override { return Threads; }
  void TerminateThreads() override { ++Terminated; }

  void AddIntegration(const TIntf<IInterface>& iIntegration) override;
  void AddIntegrations(const TIntf<IInterfaceList>& iIntegrations) override;
  TIntf<IIntegrationInfo> GetIntegrationInfo() const override;
  TIntf<IInterfaceList> GetIntegrations(const TIntf<IIntegrationInfo>& iInfo) override;

  void Convert(bool iHeader, const TIntf<ISearchResult>& iResult, TStringList& ioLines) override;

  TFakeSource& Source() { return *FSource; }
  const TIntf<TFakeSource>& SourceIntf() const { return FSource; }

  TString InitializeFailure;
  TString ConvertFailure;
  TString Price = u"10,00 EUR";
  TString CommandLine;
  int Threads = 0;
  int Terminated = 0;
  std::vector<TIntf<IInterface>> Injected;

 private:
  TIntf<TFakeSource> FSource;
};

}  // namespace kk
