#include "sources/page/TPageIntegration.h"

#include "sources/page/PageConsts.h"
#include "sources/page/PageResourceStrings.h"
#include "sources/page/TPageMobile.h"
#include "sources/page/TPageSearchResult.h"
#include "sources/page/TPageStream.h"

namespace kk {

TPageIntegration::TPageIntegration(const THttpLimits& iLimits)
    : FUpdate(MakeIntf<TPageUpdate>(iLimits)),
      FVisualization(MakeIntf<TPageVisualization>(FUpdate)),
      FConverter(MakeIntf<TPageConverter>()) {}

TGuid TPageIntegration::GetId() const { return cPagePluginId; }

TString TPageIntegration::GetName() const { return _resPageName; }

bool TPageIntegration::QueryDelegated(const TGuid& iIid, void** oInterface) {
  return FUpdate->QueryInterface(iIid, oInterface) ||
         FVisualization->QueryInterface(iIid, oInterface) ||
         FConverter->QueryInterface(iIid, oInterface);
}

TIntf<IInterfaceList> TPageIntegration::LoadSearchResults(TStream& iStream, bool /*iDecodeUTF8*/) {
  const TIntf<IInterfaceList> results = NewInterfaceList();
  for (TPageData& data : ReadPageStream(iStream)) {
    results->Add(TIntf<ISearchResult>(MakeIntf<TPageSearchResult>(std::move(data))));
  }
  return results;
}

void TPageIntegration::SaveSearchResults(const IInterfaceList& iList, TStream& ioStream) {
  TPageStreamWriter writer;
  for (int i = 0; i < iList.GetCount(); ++i) {
    if (const auto page = GetAs<IPageSearchResult>(iList, i)) writer.Add(page->Data());
  }
  ioStream.Write(writer.TakeBytes());
}

void TPageIntegration::ExportSearchResults(const IInterfaceList& iList, const TStringList& iParams,
                                           TStringList& ioLines) {
  for (int i = 0; i < iList.GetCount(); ++i) {
    const auto page = GetAs<IPageSearchResult>(iList, i);
    if (page) WriteMobilePage(page->Data(), iParams, ioLines);
  }
}

TIntf<IInterfaceList> TPageIntegration::CreateSearchResults(const TStringList& iFields) {
  const TIntf<IInterfaceList> results = NewInterfaceList();
  if (auto page = ReadMobilePage(iFields)) {
    results->Add(TIntf<ISearchResult>(MakeIntf<TPageSearchResult>(std::move(*page))));
  }
  return results;
}

bool TPageIntegration::HandlesPluginGuid(TStringView iGuid) const {
  return IsMobilePageGuid(iGuid);
}

}  // namespace kk
