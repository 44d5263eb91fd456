#include "TFileWorld.h"

#include "persistence/TWatchlistFileLoader.h"
#include "persistence/TWatchlistFileSaver.h"
#include "reminders/TRemindDetailsSound.h"

namespace kk {

void WriteArchive(const TString& iFileName, const TEntries& iEntries) {
  std::vector<std::unique_ptr<TMemoryStream>> bytes;
  std::vector<std::unique_ptr<TStreamForCompression>> owned;
  std::vector<TStreamForCompression*> streams;
  for (const auto& [name, content] : iEntries) {
    bytes.push_back(std::make_unique<TMemoryStream>(content));
    owned.push_back(
        std::make_unique<TStreamForCompression>(FromUtf8(name), bytes.back().get(), false));
    streams.push_back(owned.back().get());
  }
  TFileCompression::CompressStreams(streams, iFileName, 3, true);
}

std::map<std::string, std::string> ReadArchive(const TString& iFileName) {
  std::map<std::string, std::string> entries;
  for (auto& stream : TFileCompression::ReadPacked(iFileName)) {
    entries.emplace(ToUtf8(stream->GetName()), stream->GetStream().Bytes());
  }
  return entries;
}

std::map<std::string, std::string> ReadPackedArchive(const TString& iFileName) {
  std::map<std::string, std::string> entries;
  for (const auto& stream : TFileCompression::ReadPacked(iFileName)) {
    entries.emplace(ToUtf8(stream->GetName()), stream->GetPacked()->Bytes);
  }
  return entries;
}

TWatchlistCategory& AddCategory(TLstWatchlistCategory& ioLst, TStringView iName, const TGuid& iId) {
  auto category = std::make_unique<TWatchlistCategory>();
  category->SetId(iId);
  category->SetName(iName);
  return ioLst.Add(std::move(category));
}

TWatchlistItem& AddItem(TWatchlistCategory& ioCategory, const TIntf<TFakeSource>& iSource,
                        TStringView iName) {
  TWatchlistPlugin* group = ioCategory.LstPlugin().FindById(iSource->GetId());
  if (group == nullptr) {
    group = &ioCategory.LstPlugin().Add(std::make_unique<TWatchlistPlugin>(iSource));
  }
  TWatchlistItem& item = group->LstItem().Add(std::make_unique<TWatchlistItem>());
  item.SetParentCategoryId(ioCategory.Id());
  item.SetSearchResult(FakeResult(iName));
  return item;
}

namespace {

void AppendOutline(const TLstWatchlistCategory& iTree, const std::string& iIndent,
                   std::string& ioText) {
  for (const TWatchlistCategory* category : iTree) {
    ioText += iIndent + ToUtf8(category->Name()) + "\n";
    for (const TWatchlistPlugin* group : category->LstPlugin()) {
      ioText += iIndent + "  [" + ToUtf8(group->GetName()) + "]\n";
      for (const TWatchlistItem* item : group->LstItem()) {
        ioText += iIndent + "    " + (item->SearchResult() ? ToUtf8(item->GetName()) : "?") + "\n";
      }
    }
    AppendOutline(category->LstCategory(), iIndent + "  ", ioText);
  }
}

}  // namespace

std::string Outline(const TLstWatchlistCategory& iTree) {
  std::string text;
  AppendOutline(iTree, "", text);
  return text;
}

std::unique_ptr<TRemindItem> SoundReminder(const TGuid& iId, TDateTime iTime) {
  auto item = std::make_unique<TRemindItem>(iId);
  item->SetRemindTime(iTime);
  item->SetRemindTypes({rtSound});
  item->LstDetails().Add(std::make_unique<TRemindDetailsSound>(u"/klang.wav"));
  return item;
}

TIntf<TFakeSource> TFileWorld::AddSource(TStringView iName, const TGuid& iId) {
  auto source = MakeIntf<TFakeSource>(iName, iId);
  Integrations.Add(source);
  return source;
}

bool TFileWorld::Load() {
  TWatchlistFileLoader loader(FileName());
  return loader.LoadFromFile(Tree(), Reminders, Integrations);
}

void TFileWorld::SaveAll() {
  TWatchlistFileSaver saver(FileName());
  saver.SetSaveOnlyIfChanged(false);
  saver.SaveToFile(Tree(), Reminders, Integrations);
}

bool TFileWorld::SaveChanges() {
  TWatchlistFileSaver saver(FileName());
  saver.SaveToFile(Tree(), Reminders, Integrations);
  return !saver.LastSaveFailed();
}

void TFileWorld::ForgetTree() {
  Tree().Clear();
  Reminders.Clear();
  Root.Notes().clear();
}

}  // namespace kk
