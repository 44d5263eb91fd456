#include "bench/TBenchSource.h"

#include <array>
#include <cstring>
#include <random>

#include "host/contract/ISearchResultSameKey.h"

namespace kk {

namespace {

constexpr size_t cRecordSize = 300;
using TRecord = std::array<char, cRecordSize>;

class TBenchResult final : public TInterfaced<ISearchResult, ISearchResultSameKey> {
 public:
  explicit TBenchResult(const TRecord& iRecord) : FRecord(iRecord) {}

  TGuid GetId() const override {
    TGuid id;
    std::memcpy(id.Bytes.data(), FRecord.data(), id.Bytes.size());
    return id;
  }
  TString GetName() const override { return FromUtf8({FRecord.data() + 20, 40}); }
  bool HasEndTime() const override { return false; }
  TDateTime GetEndTime() const override { return {}; }
  void SetId(const TGuid& iId) override {
    std::memcpy(FRecord.data(), iId.Bytes.data(), iId.Bytes.size());
  }
  bool IsSame(const TIntf<ISearchResult>& iOther) const override {
    const auto* other = static_cast<const TBenchResult*>(iOther.Get());
    return std::memcmp(FRecord.data() + 16, other->FRecord.data() + 16, 4) == 0;
  }
  TIntf<ISearchResult> Clone() const override { return MakeIntf<TBenchResult>(FRecord); }
  TString GetSameKey() const override {
    char16_t key[2];
    std::memcpy(key, FRecord.data() + 16, sizeof key);
    return TString(key, 2);
  }

  const TRecord& Record() const { return FRecord; }

 private:
  TRecord FRecord;
};

}  // namespace

TIntf<ISearchResult> TBenchSource::MakeResult(const TGuid& iId, uint32_t iNumber) {
  static constexpr const char* cWords[] = {"Kamera ",   "Objektiv ", "gebraucht ", "Neuware ",
                                           "Versand ",  "EUR ",      "Zustand ",   "Original ",
                                           "Sammlung ", "Porzellan "};
  std::minstd_rand random(iNumber + 1);
  std::string text;
  while (text.size() < cRecordSize) text += cWords[random() % 10] + std::to_string(random() % 1000);
  TRecord record;
  std::memcpy(record.data(), text.data(), record.size());
  std::memcpy(record.data(), iId.Bytes.data(), iId.Bytes.size());
  std::memcpy(record.data() + 16, &iNumber, sizeof iNumber);
  return MakeIntf<TBenchResult>(record);
}

TIntf<IInterfaceList> TBenchSource::LoadSearchResults(TStream& iStream, bool) {
  const TIntf<IInterfaceList> results = NewInterfaceList();
  TRecord record;
  while (iStream.Read(record.data(), record.size()) == record.size()) {
    results->Add(TIntf<ISearchResult>(MakeIntf<TBenchResult>(record)));
  }
  return results;
}

void TBenchSource::SaveSearchResults(const IInterfaceList& iList, TStream& ioStream) {
  for (int i = 0; i < iList.GetCount(); ++i) {
    const TIntf<IInterface> entry = iList.Get(i);
    if (!entry) continue;
    const auto result = Supports<ISearchResult>(entry);
    const TRecord& record = static_cast<const TBenchResult*>(result.Get())->Record();
    ioStream.Write(record.data(), record.size());
  }
}

void TBenchSource::ExportSearchResults(const IInterfaceList& iList, const TStringList& iParams,
                                       TStringList& ioLines) {
  const TString id = u"pluginguid=" + GUIDToString(FId);
  const TString category = u"categoryguid=" + iParams.GetValue(u"categoryguid");
  for (int i = 0; i < iList.GetCount(); ++i) {
    const auto result = GetAs<ISearchResult>(iList, i);
    for (const TString& line :
         {TString(u"[Ergebnis]"), id, category, TString(u"offerdateutc=2026-11-20 18:30:00"),
          u"name=" + result->GetName(), TString(u"[/Ergebnis]")}) {
      ioLines.Add(line);
    }
  }
}

TIntf<IInterfaceList> TBenchSource::CreateSearchResults(const TStringList&) {
  return NewInterfaceList();
}

}  // namespace kk
