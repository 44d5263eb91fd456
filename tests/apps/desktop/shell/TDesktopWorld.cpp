#include "TDesktopWorld.h"

#include "host/contract/IApplication.h"

namespace kk {

bool ClickEntry(const std::vector<TMenuItem*>& iEntries, TStringView iCaption) {
  for (TMenuItem* entry : iEntries) {
    if (entry->Caption() == iCaption && entry->Click()) return true;
    if (entry->GetCount() > 0 && ClickEntry(*entry, iCaption)) return true;
  }
  return false;
}

bool ClickEntry(TMenuItem& ioMenu, TStringView iCaption) {
  std::vector<TMenuItem*> entries;
  for (int i = 0; i < ioMenu.GetCount(); ++i) entries.push_back(&ioMenu.GetItems(i));
  return ClickEntry(entries, iCaption);
}

TDesktopWorld::~TDesktopWorld() {
  FDialogs.reset();
  FSession.reset();
  FTray.reset();
  FServices.reset();
}

void TDesktopWorld::Open(const std::vector<TString>& iArguments) {
  FServices =
      std::make_unique<THostServices>(THostServices::TOptions{FromUtf8(Folder.Path()), false});
  FTray = std::make_unique<TFakeTrayIcon>();
  FTray->Available = TrayIsAvailable;
  FSession =
      std::make_unique<TDesktopSession>(TDesktopArguments::Parse(iArguments), *FServices, *FTray);
  FDialogs = std::make_unique<TScriptedQtFormHost>();
  FSession->Open();
}

void TDesktopWorld::Start(const std::vector<TString>& iArguments) {
  Open(iArguments);
  ASSERT_TRUE(CrankUntil([this] { return FSession->IsRunning(); }));
}

TDesktopExit TDesktopWorld::Quit() {
  FSession->RequestEnd();
  EXPECT_TRUE(CrankUntil([this] { return FSession->MustEnd(); }));
  return End();
}

TDesktopExit TDesktopWorld::End() {
  const TDesktopExit exit = FSession->End();
  FDialogs.reset();
  FSession.reset();
  FTray.reset();
  FServices.reset();
  return exit;
}

void TDesktopWorld::Go(TStringView iButton) {
  for (const auto& button : Desktop().ToolbarButtons()) {
    if (button->GetCaption() == iButton) return button->Click();
  }
  ADD_FAILURE() << "no button " << ToUtf8(iButton);
}

TfrmKKCommonSectionBase& TDesktopWorld::Watchlist() {
  TfrmKKCommonSectionBase* const form =
      Window().FindSection(GUIDToString(cMainMenuFormIDWatchlist));
  if (form == nullptr) throw Exception(u"no section");
  return *form;
}

TVirtualNode* TDesktopWorld::Node(TStringView iText) {
  TVirtualStringTree& tree = Tree();
  std::function<TVirtualNode*(TVirtualNode*)> find = [&](TVirtualNode* iNode) -> TVirtualNode* {
    for (; iNode != nullptr; iNode = iNode->NextSibling()) {
      if (StartsWith(tree.Text(*iNode), iText)) return iNode;
      if (TVirtualNode* const below = find(iNode->FirstChild())) return below;
    }
    return nullptr;
  };
  return find(tree.First());
}

std::string TDesktopWorld::TreeText() {
  std::string result;
  TVirtualStringTree& tree = Tree();
  std::function<void(TVirtualNode*, int)> add = [&](TVirtualNode* iNode, int iLevel) {
    for (; iNode != nullptr; iNode = iNode->NextSibling()) {
      result +=
          std::string(static_cast<size_t>(2 * iLevel), ' ') + ToUtf8(tree.Text(*iNode)) + '\n';
      add(iNode->FirstChild(), iLevel + 1);
    }
  };
  add(tree.First(), 0);
  return result;
}

}  // namespace kk
