#include "bench/TBenchWorld.h"

#include <cstdlib>
#include <filesystem>

#include "bench/NumberedGuid.h"
#include "host/common/TFileCompression.h"
#include "host/common/TFileHelper.h"
#include "reminders/TRemindHandler.h"

namespace kk {

namespace {

TWatchlistPlugin& GroupOf(TWatchlistCategory& ioCategory,
                          const TIntf<IWatchlistIntegration>& iSource) {
  if (TWatchlistPlugin* group = ioCategory.LstPlugin().FindById(iSource->GetId())) return *group;
  return ioCategory.LstPlugin().Add(std::make_unique<TWatchlistPlugin>(iSource));
}

}  // namespace

TBenchWorld::TBenchWorld(int iItems) : FItems(iItems) {
  std::string pattern = (std::filesystem::temp_directory_path() / "kk-bench-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw Exception(u"no temporary folder");
  FFolder = pattern;
  const TString folder = FromUtf8(FFolder);
  SetHostFolders({folder, folder, folder, folder, folder});
  TFileCompression::SetMaxEntrySize(size_t{4} << 30);
  CreateHandler(nullptr);
  for (uint32_t i = 0; i < cSources; ++i) {
    FSourceIds.push_back(NumberedGuid(1, i));
    Handler().LstIntegration().Add(
        MakeIntf<TBenchSource>(FSourceIds.back(), u"Quelle " + IntToStr(i)));
  }
  for (uint32_t i = 0; i < cCategories; ++i) {
    auto category = std::make_unique<TWatchlistCategory>();
    category->SetId(NumberedGuid(2, i));
    category->SetName(u"Kategorie " + IntToStr(i));
    Handler().LstCategory().Add(std::move(category));
  }
  for (uint32_t i = 0; i < static_cast<uint32_t>(FItems); ++i) {
    FItemIds.push_back(NumberedGuid(3, i));
  }
  Fill();
}

TBenchWorld::~TBenchWorld() {
  Handler().LstCategory().Clear();
  FreeHandler();
  SetHostFolders({});
  std::error_code ignored;
  std::filesystem::remove_all(FFolder, ignored);
}

void TBenchWorld::Fill() {
  const TLstWatchlistCategory& categories = Handler().LstCategory();
  for (int i = 0; i < FItems; ++i) {
    const TGuid& id = FItemIds[static_cast<size_t>(i)];
    if (categories.FindItemById(id) != nullptr) continue;
    TWatchlistCategory& category = categories.GetItems(i % cCategories);
    const auto source = Handler().LstIntegration().GetIntegrations(i / cCategories % cSources);
    auto item = std::make_unique<TWatchlistItem>();
    item->SetSearchResult(TBenchSource::MakeResult(id, static_cast<uint32_t>(i)));
    item->SetParentCategoryId(category.Id());
    item->SetLastUpdateDate(TDateTime::FromMs(4'000'000'000'000 + int64_t{i} * 61'000));
    if (i % 10 == 0) item->Description().Add(u"Notiz zu Nummer " + IntToStr(i));
    GroupOf(category, source).LstItem().Add(std::move(item));
  }
}

void TBenchWorld::MarkAllChanged() {
  for (TWatchlistIntegration* record : Handler().LstIntegration()) {
    record->SetChangedItems(true);
    record->SetChangedSearchResults(true);
  }
}

std::vector<TBenchWorld::TEntry> TBenchWorld::Entries() const {
  std::vector<TEntry> entries;
  for (const auto& stream : TFileCompression::ReadPacked(Handler().GetFileName())) {
    entries.push_back({stream->GetName(), stream->GetStream().Bytes()});
  }
  return entries;
}

}  // namespace kk
