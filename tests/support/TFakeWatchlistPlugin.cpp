#include "tests/support/TFakeWatchlistPlugin.h"

#include <algorithm>

#include "host/base/Exception.h"
#include "host/base/Log.h"
#include "host/base/TClock.h"
#include "host/base/TMainLoop.h"
#include "host/controls/TCheckBox.h"
#include "host/controls/TComboBox.h"
#include "host/controls/TLabel.h"
#include "host/controls/TPrintDialog.h"
#include "host/controls/TfrmKKCommonMessageDlg.h"
#include "tests/support/TFakeRemindEditor.h"
#include "tests/support/TFakeSource.h"

namespace kk {
namespace {

/// The window that asks for the place of new results, as the watch list has it.
class TFakeAddDialog : public TForm {
 public:
  TFakeAddDialog() : TForm(nullptr, u"TfrmFakeAdd", u"Zu Beobachtenliste hinzufügen") {
    cmbxCategory.SetOnKeyPress(TKeyPressEvent::Of<&TFakeAddDialog::cmbxCategoryKeyPress>(this));
    SetCancelButton(&btnCancel);
  }
  void cmbxCategoryKeyPress(TObject*, char16_t& ioKey) {
    if (ioKey != cKeyReturn) return;
    ioKey = 0;
    btnOnlyNew.Click();
  }

  TLabel Label1{this, u"Label1", u"Kategorie:"};
  TComboBox cmbxCategory{this, u"cmbxCategory"};
  TCheckBox chckbxPreset{this, u"chckbxPreset", u"Als Voreinstellung"};
  TPanel pnlButtons{this, u"pnlButtons"};
  TButton btnOnlyNew{&pnlButtons, u"btnOnlyNew", u"Nur neue zuordnen", cModalOK};
  TButton btnAll{&pnlButtons, u"btnAll", u"Alle zuordnen", cModalAll};
  TButton btnCancel{&pnlButtons, u"btnCancel", u"Abbrechen", cModalCancel};
};

TWatchlistCategoryInfo* FindCategory(std::vector<TWatchlistCategoryInfo>& ioCategories,
                                     const TGuid& iId) {
  for (TWatchlistCategoryInfo& category : ioCategories) {
    if (category.Id == iId) return &category;
    if (auto* const found = FindCategory(category.Categories, iId)) return found;
  }
  return nullptr;
}

const TWatchlistItemInfo* FindItem(const std::vector<TWatchlistCategoryInfo>& iCategories,
                                   const TGuid& iId) {
  for (const TWatchlistCategoryInfo& category : iCategories) {
    for (const TWatchlistGroupInfo& group : category.Groups) {
      const auto item = std::ranges::find(group.Items, iId, &TWatchlistItemInfo::Id);
      if (item != group.Items.end()) return &*item;
    }
    if (const auto* const found = FindItem(category.Categories, iId)) return found;
  }
  return nullptr;
}

TWatchlistGroupInfo& GroupIn(TWatchlistCategoryInfo& ioCategory, const TGuid& iSource) {
  for (TWatchlistGroupInfo& group : ioCategory.Groups) {
    if (group.PluginId == iSource) return group;
  }
  ioCategory.Groups.push_back({iSource, u"Quelle", {}});
  return ioCategory.Groups.back();
}

TWatchlistItemInfo ItemOf(const TIntf<ISearchResult>& iResult) {
  TWatchlistItemInfo item;
  item.Id = iResult->GetId();
  item.Name = iResult->GetName();
  item.SearchResult = iResult;
  return item;
}

bool HasSame(const std::vector<TWatchlistCategoryInfo>& iCategories, const TGuid& iSource,
             const TIntf<ISearchResult>& iResult) {
  return std::ranges::any_of(iCategories, [&](const TWatchlistCategoryInfo& iCategory) {
    for (const auto& group : iCategory.Groups) {
      if (group.PluginId != iSource) continue;
      for (const auto& item : group.Items) {
        if (item.SearchResult && item.SearchResult->IsSame(iResult)) return true;
      }
    }
    return HasSame(iCategory.Categories, iSource, iResult);
  });
}

std::string Joined(const std::vector<TString>& iLines) {
  std::string result;
  for (const TString& line : iLines) result += " <" + ToUtf8(line) + ">";
  return result;
}

}  // namespace

TFakeWatchlistPlugin::TFakeWatchlistPlugin() {
  Tree.Categories.push_back({cEmptyGuid, u"<Keiner Kategorie zugewiesen>", {}, false, {}, {}});
}

void TFakeWatchlistPlugin::Initialize(const TIntf<IApplication>& iApplication) {
  TCommonPlugin::Initialize(iApplication);
  LogInfo(u"Beobachten", u"Initialize");
}

void TFakeWatchlistPlugin::Uninitialize() {
  TCommonPlugin::Uninitialize();
  FSources.clear();
  if (!UninitializeFailure.empty()) throw Exception(UninitializeFailure);
  LogInfo(u"Beobachten", u"Uninitialize");
}

void TFakeWatchlistPlugin::ProcessCdmLineParams(TStringView iParamsAsStr) {
  Note("ProcessCdmLineParams " + ToUtf8(iParamsAsStr));
  if (iParamsAsStr.find(u"fake:") == TStringView::npos) return;
  const TString name(iParamsAsStr.substr(iParamsAsStr.find(u"fake:") + 5));
  Queue({FakeResult(name), FSources[0]->GetId(), cEmptyGuid, true});
}

void TFakeWatchlistPlugin::TerminateThreads() {
  Note("TerminateThreads");
  LogInfo(u"Beobachten", u"TerminateThreads");
  FOpen.clear();
}

void TFakeWatchlistPlugin::AddIntegrations(const TIntf<IInterfaceList>& iIntegrations) {
  for (int i = 0; i < iIntegrations->GetCount(); ++i) {
    if (const auto source = GetAs<IWatchlistIntegration>(*iIntegrations, i)) {
      FSources.push_back(source);
    }
  }
}

TIntf<IIntegrationInfo> TFakeWatchlistPlugin::GetIntegrationInfo() const {
  return MakeIntf<TPluginIntegrationInfo>(FId, GetGroup());
}

TIntf<IInterfaceList> TFakeWatchlistPlugin::GetIntegrations(const TIntf<IIntegrationInfo>&) {
  const TIntf<IInterfaceList> result = NewInterfaceList();
  result->Add(TIntf<IWatchlist>(this));
  return result;
}

bool TFakeWatchlistPlugin::AddItem(const TGuid& iTargetPluginId,
                                   const TIntf<ISearchResult>& iSearchResult) {
  Note("AddItem " + ToUtf8(iSearchResult->GetName()));
  TGuid target = cEmptyGuid;
  if (ShowsDialog && !AskForCategory(target)) return false;
  Queue({iSearchResult, iTargetPluginId, target, true});
  return true;
}

bool TFakeWatchlistPlugin::HasItem(const TGuid& iTargetPluginId,
                                   const TIntf<ISearchResult>& iSearchResult) {
  return HasSame(Tree.Categories, iTargetPluginId, iSearchResult);
}

bool TFakeWatchlistPlugin::AskForCategory(TGuid& oTarget) {
  TFakeAddDialog dialog;
  for (const auto& category : Tree.Categories) dialog.cmbxCategory.AddItem(category.Name);
  dialog.cmbxCategory.SetItemIndex(0);
  const int result = dialog.ShowModal();
  if (result != cModalOK && result != cModalAll) return false;
  if (dialog.cmbxCategory.ItemIndex() < 0) {
    oTarget = Category(dialog.cmbxCategory.Text()).Id;
  } else {
    oTarget = Tree.Categories[static_cast<size_t>(dialog.cmbxCategory.ItemIndex())].Id;
  }
  return true;
}

void TFakeWatchlistPlugin::Queue(TOpen iOpen) {
  FOpen.push_back(std::move(iOpen));
  if (OnRequest) OnRequest();
  if (!NeverEnds) MainLoop().Post([this] { EndFirst(); });
}

void TFakeWatchlistPlugin::EndFirst() {
  if (FOpen.empty()) return;
  const TOpen open = FOpen.front();
  FOpen.erase(FOpen.begin());
  const bool failed = std::ranges::find(Failing, open.Result->GetName()) != Failing.end();
  if (open.IsAdd && !failed) {
    auto* const category = FindCategory(Tree.Categories, open.Target);
    GroupIn(*category, open.Source).Items.push_back(ItemOf(open.Result));
  }
  if (FOnFinished) FOnFinished(nullptr, open.Result, !failed);
}

bool TFakeWatchlistPlugin::Ask(TStringView iText) {
  return TfrmKKCommonMessageDlg::Display(nullptr, iText, u"&Ja, löschen", u"Es wird gelöscht.",
                                         u"&Nein, abbrechen", u"Der Vorgang wird abgebrochen.");
}

TGuid TFakeWatchlistPlugin::AddCategory(const std::optional<TGuid>& iParent, TStringView iName,
                                        const std::vector<TString>& iDescription) {
  Note("AddCategory " + (iParent ? NameOf(*iParent) : "-") + " " + ToUtf8(iName) +
       Joined(iDescription));
  for (const auto& category : Tree.Categories) {
    if (SameText(category.Name, iName)) throw Exception(u"Der Name ist vergeben");
  }
  return Category(iName).Id;
}

void TFakeWatchlistPlugin::RenameCategory(const TGuid& iCategory, TStringView iName) {
  Note("RenameCategory " + NameOf(iCategory) + " " + ToUtf8(iName));
}

void TFakeWatchlistPlugin::DescribeCategory(const TGuid& iCategory,
                                            const std::vector<TString>& iLines) {
  Note("DescribeCategory " + NameOf(iCategory) + Joined(iLines));
}

void TFakeWatchlistPlugin::MoveCategory(const TGuid& iCategory,
                                        const std::optional<TGuid>& iTarget) {
  Note("MoveCategory " + NameOf(iCategory) + " " + (iTarget ? NameOf(*iTarget) : "-"));
}

bool TFakeWatchlistPlugin::DeleteCategory(const TGuid& iCategory) {
  Note("DeleteCategory " + NameOf(iCategory));
  return Ask(u"Soll die markierte Kategorie wirklich gelöscht werden?");
}

void TFakeWatchlistPlugin::MoveItems(const std::vector<TGuid>& iItems, const TGuid& iTarget) {
  std::string call = "MoveItems";
  for (const TGuid& id : iItems) {
    call += " " + NameOf(id);
    for (auto& category : Tree.Categories) {
      for (auto& group : category.Groups) {
        const auto item = std::ranges::find(group.Items, id, &TWatchlistItemInfo::Id);
        if (item == group.Items.end()) continue;
        const TWatchlistItemInfo moved = *item;
        const TGuid source = group.PluginId;
        group.Items.erase(item);
        GroupIn(*FindCategory(Tree.Categories, iTarget), source).Items.push_back(moved);
        break;
      }
    }
  }
  Note(call + " -> " + NameOf(iTarget));
}

bool TFakeWatchlistPlugin::DeleteItems(const std::vector<TGuid>& iItems) {
  std::string call = "DeleteItems";
  for (const TGuid& id : iItems) call += " " + NameOf(id);
  Note(call);
  return Ask(u"Soll der markierte Eintrag wirklich gelöscht werden?");
}

bool TFakeWatchlistPlugin::SetNote(const std::vector<TGuid>& iItems,
                                   const std::vector<TString>& iLines) {
  std::string call = "SetNote";
  for (const TGuid& id : iItems) call += " " + NameOf(id);
  Note(call + Joined(iLines));
  return iItems.size() < 2 || Ask(u"Sie haben mehrere Einträge markiert!");
}

int TFakeWatchlistPlugin::QueueItems(const std::vector<TWatchlistCategoryInfo>& iCategories) {
  int count = 0;
  for (const auto& category : iCategories) {
    for (const auto& group : category.Groups) {
      for (const auto& item : group.Items) {
        Queue({item.SearchResult, group.PluginId, {}, false});
        ++count;
      }
    }
    count += QueueItems(category.Categories);
  }
  return count;
}

int TFakeWatchlistPlugin::RefreshAll() {
  Note("RefreshAll");
  return QueueItems(Tree.Categories);
}

int TFakeWatchlistPlugin::RefreshCategory(const TGuid& iCategory) {
  Note("RefreshCategory " + NameOf(iCategory));
  return QueueItems({*FindCategory(Tree.Categories, iCategory)});
}

int TFakeWatchlistPlugin::RefreshItems(const std::vector<TGuid>& iItems) {
  Note("RefreshItems " + NameOf(iItems.at(0)));
  for (const auto& category : Tree.Categories) {
    for (const auto& group : category.Groups) {
      for (const auto& item : group.Items) {
        if (item.Id == iItems[0]) Queue({item.SearchResult, group.PluginId, {}, false});
      }
    }
  }
  return OpenUpdates();
}

void TFakeWatchlistPlugin::EditReminders(const std::vector<TGuid>& iItems) {
  Note("EditReminders " + NameOf(iItems.at(0)));
  const TWatchlistItemInfo& item = *FindItem(Tree.Categories, iItems[0]);
  TFakeRemindEditor editor(Now().PlusMs(-EditorStartsLate), item.EndTime);
  if (editor.ShowModal() != cModalOK) return;
  std::erase_if(Tree.Reminders, [&](const auto& iOld) { return iOld.Id == item.Id; });
  if (ReminderIsLost) return;
  constexpr int cTypes[] = {0, 1, 4, 3, 2};
  TWatchlistReminderInfo& reminder = Reminder(item.Id, editor.Time());
  reminder.Types = {cTypes[editor.cmbxRemindType.ItemIndex()]};
  if (SourceHasNoText) reminder.Types.clear();
  if (!editor.edtSoundFile.Enabled()) return;
  reminder.SoundFile = editor.edtSoundFile.Text();
  if (editor.chckbxSoundfile.Visible()) reminder.Types.insert(reminder.Types.begin(), 0);
}

bool TFakeWatchlistPlugin::DeleteReminders(const std::vector<TGuid>& iItems) {
  Note("DeleteReminders " + NameOf(iItems.at(0)));
  if (!Ask(u"Soll die Erinnerung wirklich gelöscht werden?")) return false;
  std::erase_if(Tree.Reminders, [&](const auto& iOld) { return iOld.Id == iItems[0]; });
  return true;
}

bool TFakeWatchlistPlugin::Save() {
  Note("Save");
  UnsavedReminders = false;
  return !SaveFails;
}

bool TFakeWatchlistPlugin::ExportToFile(TStringView iFileName,
                                        const TWatchlistExportChoice& iChoice) {
  std::string call = "ExportToFile " + ToUtf8(iFileName);
  for (const TGuid& id : iChoice.Categories) call += ' ' + NameOf(id);
  for (const TGuid& id : iChoice.Sources) call += ' ' + ToUtf8(GUIDToString(id));
  Note(call);
  return !ExchangeFails;
}

bool TFakeWatchlistPlugin::Import(const std::string& iCall) {
  Note(iCall);
  if (OnImport) OnImport();
  return !ExchangeFails;
}

bool TFakeWatchlistPlugin::ImportFromFile(TStringView iFileName, TStringView iCategoryName) {
  const TString into = iCategoryName.empty() ? TString() : u" " + TString(iCategoryName);
  return Import("ImportFromFile " + ToUtf8(TString(iFileName) + into));
}

bool TFakeWatchlistPlugin::OfferImport(TStringView iFileName) {
  return Import("OfferImport " + ToUtf8(iFileName));
}

void TFakeWatchlistPlugin::ExportToMobile(TStringView iFileName) {
  Note("ExportToMobile " + ToUtf8(iFileName));
  if (ExchangeFails) throw Exception(u"Kein Platz");
}

bool TFakeWatchlistPlugin::ImportFromMobile(TStringView iFileName) {
  return Import("ImportFromMobile " + ToUtf8(iFileName));
}

void TFakeWatchlistPlugin::PrintCategory(const TGuid& iCategory) {
  Note("PrintCategory " + NameOf(iCategory));
  for (const TWatchlistGroupInfo& group : FindCategory(Tree.Categories, iCategory)->Groups) {
    TPrintContent content{FromUtf8(NameOf(iCategory)), {}, group.Name, {u"Name"}, {}, {}};
    for (const TWatchlistItemInfo& item : group.Items) content.Rows.push_back({item.Name});
    const auto job = Printing().CreateJob(std::move(content));
    TPrintDialog dialog;
    if (dialog.Execute()) job->Print(1, job->CalculatePageCount());
  }
}

TWatchlistReminderInfo& TFakeWatchlistPlugin::Reminder(const TGuid& iItem, TDateTime iTime) {
  Tree.Reminders.push_back({iItem, iTime, {1}, {}});
  UnsavedReminders = true;
  return Tree.Reminders.back();
}

void TFakeWatchlistPlugin::DeliverFirst() { Deliver(ExtractFirst()); }

TWatchlistReminderInfo TFakeWatchlistPlugin::ExtractFirst() {
  const TWatchlistReminderInfo first = Tree.Reminders.front();
  Tree.Reminders.erase(Tree.Reminders.begin());
  UnsavedReminders = true;
  return first;
}

void TFakeWatchlistPlugin::Deliver(const TWatchlistReminderInfo& iReminder) {
  LogInfo(u"Watchlist-Reminder", u"Melde Erinnerung");
  if (FOnDue) FOnDue(nullptr, iReminder);
}

std::string TFakeWatchlistPlugin::NameOf(const TGuid& iId) const {
  std::string result = "?";
  const std::function<void(const std::vector<TWatchlistCategoryInfo>&)> look =
      [&](const std::vector<TWatchlistCategoryInfo>& iCategories) {
        for (const auto& category : iCategories) {
          if (category.Id == iId) result = ToUtf8(category.Name);
          for (const auto& group : category.Groups) {
            for (const auto& item : group.Items) {
              if (item.Id == iId) result = ToUtf8(item.Name);
            }
          }
          look(category.Categories);
        }
      };
  look(Tree.Categories);
  return result;
}

TWatchlistCategoryInfo& TFakeWatchlistPlugin::Category(TStringView iName) {
  for (auto& category : Tree.Categories) {
    if (category.Name == iName) return category;
  }
  Tree.Categories.push_back({NewGuid(), TString(iName), {}, false, {}, {}});
  return Tree.Categories.back();
}

TWatchlistItemInfo& TFakeWatchlistPlugin::Item(TStringView iCategory, TStringView iName,
                                               const TGuid& iSource) {
  TWatchlistGroupInfo& group = GroupIn(Category(iCategory), iSource);
  group.Items.push_back(ItemOf(FakeResult(iName)));
  return group.Items.back();
}

}  // namespace kk
