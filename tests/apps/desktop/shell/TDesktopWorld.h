#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "TScriptedQtFormHost.h"
#include "apps/desktop/shell/TDesktopSession.h"
#include "host/controls/TVirtualStringTree.h"
#include "host/results/TResultTable.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/qt/OffscreenQt.h"

namespace kk {

/// A tray that is there or not, as the test says.
class TFakeTrayIcon : public TTrayIcon {
 public:
  bool IsAvailable() const override { return Available; }
  bool Available = false;
};

/// The control of this kind and name in another one; null if there is none.
template <class T>
T* FindControl(TControl& ioRoot, TStringView iName) {
  if (auto* const found = dynamic_cast<T*>(&ioRoot); found != nullptr) {
    if (iName.empty() || ioRoot.Name() == iName) return found;
  }
  for (TControl* child : ioRoot.Children()) {
    if (T* const found = FindControl<T>(*child, iName)) return found;
  }
  return nullptr;
}
template <class T>
T& TheControl(TControl& ioRoot, TStringView iName = {}) {
  T* const found = FindControl<T>(ioRoot, iName);
  if (found == nullptr) throw Exception(Format(u"no control %s", {iName}));
  return *found;
}
/// Clicks the entry whose caption this is, sub-menus included; false if there is none to click.
bool ClickEntry(const std::vector<TMenuItem*>& iEntries, TStringView iCaption);
bool ClickEntry(TMenuItem& ioMenu, TStringView iCaption);

/// The whole program in this process, with the real packages, on a folder of its own that outlives
/// it: it can be started again and again.
class TDesktopWorld {
 public:
  TDesktopWorld() { NeedQt(); }
  ~TDesktopWorld();

  /// Up to the open window; the arguments as they stand behind the program's name.
  void Open(const std::vector<TString>& iArguments = {});
  /// Up to the first section.
  void Start(const std::vector<TString>& iArguments = {});
  /// The user ends it.
  TDesktopExit Quit();
  /// The loop was left, whoever wanted it.
  TDesktopExit End();

  TTempFolder Folder;
  TFakeTrayIcon& Tray() { return *FTray; }
  TDesktopSession& Session() { return *FSession; }
  TDesktop& Desktop() { return FSession->Desktop(); }
  TMainWindow& Window() { return Desktop().Window(); }
  TfrmSearch& Search() { return Desktop().Search(); }
  TScriptedQtFormHost& Dialogs() { return *FDialogs; }
  IWatchlistAccess& List() { return FSession->Host()->Plugins().List(); }

  /// Clicks the button of the main toolbar.
  void Go(TStringView iButton);
  /// The section "Beobachten" and its parts, once it was shown.
  TfrmKKCommonSectionBase& Watchlist();
  TVirtualStringTree& Tree() { return TheControl<TVirtualStringTree>(Watchlist()); }
  /// The list of the tab in front.
  TResultTable& Items() { return TheControl<TResultTable>(Watchlist()); }
  /// The node with a text that begins so; null if there is none.
  TVirtualNode* Node(TStringView iText);
  /// What the nodes say, each in a line, with two blanks before those of a deeper level.
  std::string TreeText();

  /// Before Open.
  bool TrayIsAvailable = false;

 private:
  std::unique_ptr<THostServices> FServices;
  std::unique_ptr<TFakeTrayIcon> FTray;
  std::unique_ptr<TDesktopSession> FSession;
  std::unique_ptr<TScriptedQtFormHost> FDialogs;
};

}  // namespace kk
