#include "sources/page/TPageSearch.h"

#include <limits>

#include "host/contract/TPluginIntegration.h"
#include "sources/page/PageConsts.h"
#include "sources/page/PageResourceStrings.h"
#include "sources/page/ReadAddresses.h"

namespace kk {

namespace {

// What is repeated of a line that can't be understood.
constexpr size_t cMaxShown = 80;

}  // namespace

TPageSearch::TPageSearch(TIntf<TPageUpdate> iUpdate)
    : FUpdate(std::move(iUpdate)), FList(cPageSearchLayoutKey, _resPageSearchListEmpty) {}

TPageSearch::~TPageSearch() { Cancel(); }

TString TPageSearch::GetCaption() const { return _resPageName; }

TBitmap TPageSearch::GetImage() const { return {cPageImage}; }

TBitmap TPageSearch::GetImageSelected() const { return {cPageImageSelected}; }

TString TPageSearch::GetPrompt() const { return _resPageSearchPrompt; }

TIntf<IIntegrationInfo> TPageSearch::GetIntegrationInfo() const {
  return MakeIntf<TPluginIntegrationInfo>(cPagePluginId, cPagePluginGroup);
}

void TPageSearch::Search(TStringView iText, TNotifySearchFinished iOnFinished) {
  const TIntf<TPageSearch> self(this);  // what hears of the empty list may let go of it
  FList.SetResults(nullptr);
  Cancel();
  FSearching = true;
  FOnFinished = iOnFinished;
  TakeText(iText);
  ReadNext();
  FinishIfDone();
}

void TPageSearch::TakeText(TStringView iText) {
  const std::vector<TAddressLine> lines = ReadAddresses(iText);
  if (lines.empty()) FProblems.emplace(0, _resPageSearchNothing);
  size_t passedOver = 0;
  for (size_t i = 0; i < lines.size(); ++i) {
    const int line = static_cast<int>(i);
    if (lines[i].Addresses.empty()) {
      const TString shown = ShortenedText(lines[i].Text, cMaxShown);
      FProblems.emplace(line, Format(_resPageSearchNoAddress, {shown}));
    }
    for (const TPageAddress& address : lines[i].Addresses) {
      if (FPages.size() < cMaxPages) {
        FPages.push_back({address, line});
      } else {
        ++passedOver;
      }
    }
  }
  if (passedOver == 0) return;
  FProblems.emplace(std::numeric_limits<int>::max(),
                    Format(_resPageSearchTooMany, {cMaxPages, passedOver}));
}

void TPageSearch::ReadNext() {
  while (FNext < FPages.size() && FUnderWay.size() < cAtOnce) {
    const TPage& page = FPages[FNext++];
    const auto result =
        MakeIntf<TPageSearchResult>(NewPageData(page.Address, FromUtf8(page.Address.Text())));
    FUnderWay.emplace(result->GetId(), page.Line);
    FUpdate->Read(result, TNotifyPageRead::Of<&TPageSearch::DoRead>(this));
  }
}

void TPageSearch::DoRead(const TIntf<ISearchResult>& iResult, const TString& iReason) {
  const TIntf<TPageSearch> self(this);
  const auto entry = FUnderWay.find(iResult->GetId());
  const int line = entry->second;
  FUnderWay.erase(entry);
  if (!iReason.empty()) {
    const TString address = FromUtf8(Supports<IPageSearchResult>(iResult)->Data().Address.Text());
    FProblems.emplace(line, Format(_resPageSearchFailed, {address, iReason}));
  }
  ReadNext();
  if (iReason.empty()) FList.AddResult(iResult);
  FinishIfDone();
}

void TPageSearch::FinishIfDone() {
  if (!FSearching || !FUnderWay.empty()) return;
  TString problem;
  for (const auto& [line, sentence] : FProblems) {
    if (!problem.empty()) problem += u"\n";
    problem += sentence;
  }
  const TNotifySearchFinished onFinished = FOnFinished;
  Cancel();
  if (onFinished) onFinished(this, problem);
}

void TPageSearch::Cancel() {
  FUpdate->Forget(TNotifyPageRead::Of<&TPageSearch::DoRead>(this));
  FSearching = false;
  FOnFinished = {};
  FPages.clear();
  FNext = 0;
  FUnderWay.clear();
  FProblems.clear();
}

void TPageSearch::ReleaseSearch() {
  Cancel();
  FList.SetOnSelectionChanged({});
  FList.Close();
}

}  // namespace kk
