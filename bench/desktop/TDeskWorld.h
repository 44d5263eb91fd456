#pragma once

#include <QTreeView>
#include <functional>
#include <memory>
#include <string>

#include "apps/desktop/shell/TDesktopSession.h"
#include "host/controls/TVirtualStringTree.h"
#include "host/results/TResultTable.h"

namespace kk {

/// The whole program of the desktop in this process, with the real packages, on the folder of a
/// watch list. Questions are answered with "Ja" without a dialog. What is done goes through the
/// doors of the user. A QApplication stands before it.
class TDeskWorld : private IFormHost {
 public:
  explicit TDeskWorld(const std::string& iFolder);
  ~TDeskWorld() override;
  TDeskWorld(const TDeskWorld&) = delete;
  TDeskWorld& operator=(const TDeskWorld&) = delete;

  /// The window is on its way to the screen.
  void Open();
  /// Up to the filled list.
  void Start();
  /// Turns the loop until the condition holds; raises Exception if that takes two minutes.
  static void CrankUntil(const std::function<bool()>& iCondition);
  /// Turns the loop until nothing is left to do.
  static void CrankUntilIdle();

  /// Tree and list can be worked with: nodes, rows and a selected node are there.
  bool IsFilled();
  TMainWindow& Window() { return FSession->Desktop().Window(); }
  IWatchlistAccess& List() { return FSession->Host()->Plugins().List(); }
  TVirtualStringTree& Tree();
  /// The list of the tab in front.
  TResultTable& Items();
  /// What draws them.
  QTreeView& TreeView() { return View(true); }
  QTreeView& ItemsView() { return View(false); }

  /// The node of the category, which is one of the top level; raises Exception if there is none.
  TVirtualNode& Node(TStringView iName);
  /// The user goes to the category.
  void GoTo(TStringView iName);
  void SelectAllRows();
  /// The user opens the list's menu on the row with the focus.
  void OpenItemsMenu();
  /// Clicks an entry of the open menu, then one of its sub-menu if that is given. Raises Exception
  /// if it can't be clicked.
  void ClickItems(TStringView iCaption, TStringView iSub = {});

 private:
  void ShowModal(TForm& ioForm) override;
  bool ShowOpenDialog(TOpenDialog&) override { return false; }
  QTreeView& View(bool iIsTree);
  TfrmKKCommonSectionBase* Section();

  std::string FFolder;
  TTrayIcon FTray;
  std::unique_ptr<THostServices> FServices;
  std::unique_ptr<TDesktopSession> FSession;
  IFormHost* FFormHost = nullptr;
};

}  // namespace kk
