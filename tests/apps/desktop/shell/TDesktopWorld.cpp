#include "TDesktopWorld.h"

#include <QApplication>
#include <chrono>

#include "host/contract/IApplication.h"

namespace kk {

void NeedQt() {
  if (QCoreApplication::instance() != nullptr) return;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
  static int count = 1;
  static char name[] = "tests";
  static char* arguments[] = {name, nullptr};
  // It stays to the end of the process: what Qt keeps for it in statics of its own goes earlier.
  static const QApplication* const application =
      std::make_unique<QApplication>(count, arguments).release();
  (void)application;
}

bool CrankUntil(const std::function<bool()>& iCondition) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (!iCondition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  }
  return true;
}

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
