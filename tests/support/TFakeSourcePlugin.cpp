#include "tests/support/TFakeSourcePlugin.h"

#include "host/base/Exception.h"
#include "host/base/Log.h"

namespace kk {

TFakeSourcePlugin::TFakeSourcePlugin(TStringView iName, TFakeAbilities iAbilities)
    : FSource(MakeIntf<TFakeSource>(iName, NewGuid(), iAbilities)) {}

void TFakeSourcePlugin::Initialize(const TIntf<IApplication>& iApplication) {
  if (!InitializeFailure.empty()) throw Exception(InitializeFailure);
  TCommonPlugin::Initialize(iApplication);
  LogInfo(FSource->GetName(), u"Initialize");
}

void TFakeSourcePlugin::Uninitialize() { LogInfo(FSource->GetName(), u"Uninitialize"); }

void TFakeSourcePlugin::AddIntegration(const TIntf<IInterface>& iIntegration) {
  Injected.push_back(iIntegration);
}

void TFakeSourcePlugin::AddIntegrations(const TIntf<IInterfaceList>& iIntegrations) {
  for (int i = 0; i < iIntegrations->GetCount(); ++i) AddIntegration(iIntegrations->Get(i));
}

TIntf<IIntegrationInfo> TFakeSourcePlugin::GetIntegrationInfo() const {
  return MakeIntf<TPluginIntegrationInfo>(GetId(), GetGroup());
}

TIntf<IInterfaceList> TFakeSourcePlugin::GetIntegrations(const TIntf<IIntegrationInfo>&) {
  const TIntf<IInterfaceList> result = NewInterfaceList();
  result->Add(FSource);
  return result;
}

void TFakeSourcePlugin::Convert(bool iHeader, const TIntf<ISearchResult>& iResult,
                                TStringList& ioLines) {
  if (!ConvertFailure.empty()) throw Exception(ConvertFailure);
  const auto add = [&](std::initializer_list<TStringView> values) {
    for (const TStringView value : values) ioLines.Add(value);
  };
  if (iHeader) return add({u"Name", u"Preis", u"Adresse", u"Verkäufer"});
  if (iResult) add({iResult->GetName(), Price, u"http://127.0.0.1/ein/sehr/langer/weg/lampe", u""});
}

}  // namespace kk
