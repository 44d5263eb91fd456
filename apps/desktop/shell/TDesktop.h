#pragma once

#include <optional>

#include "apps/desktop/shell/IDesktop.h"
#include "apps/desktop/shell/TMainWindow.h"
#include "apps/desktop/shell/TPopUpWindows.h"
#include "apps/desktop/shell/TToolbarButtonOptions.h"
#include "apps/desktop/shell/TTrayIcon.h"
#include "host/program/TExampleShop.h"
#include "host/program/THostPlugins.h"
#include "host/search/TToolbarButtonSearch.h"
#include "host/search/TfrmSearch.h"

namespace kk {

/// What is on the screen: the window with its sections, the tray, pop-ups, the main toolbar, and
/// what a user does with them beside the sections' own business. The main loop, the form host and
/// the settings file stand before it. Main thread.
class TDesktop : public TObject, public IDesktop {
 public:
  /// The tray's icon is borrowed.
  explicit TDesktop(TTrayIcon& ioTray);
  ~TDesktop() override;

  /// Puts the window on the screen, or, if the setting says so and there is a tray, only the icon.
  void Open();
  /// The plug-ins are started: opens the searches and shows the section of the last time, or
  /// "Suchen". Both are borrowed until Leave.
  void Begin(THostPlugins& ioPlugins, const TIntf<IApplication>& iApplication);
  bool HasBegun() const { return FPlugins != nullptr; }
  /// The program ends: remembers the window's place and takes all windows away. What plug-ins still
  /// show is taken, and comes to nothing.
  void Hide();
  /// Ends the searches and lets go of the plug-ins; before they are uninitialised.
  void Leave();

  /// Words go to "Suchen"; of files the user is asked what to import. Only once it has begun.
  void Take(const TDroppedText& iText);
  /// "-rem" and "-remimport", which imports without asking.
  void TakeHostLine(const std::vector<TString>& iLine);
  /// In front, out of the tray if it was there. iActivation: see TMainWindow.
  void ComeBack(TStringView iActivation = {});
  /// False, and nothing, where there is no tray or a plug-in says no.
  bool GoToTray();

  void SetOnQuit(std::function<void()> iEvent) { FOnQuit = std::move(iEvent); }

  TMainWindow& Window() { return FWindow; }
  TfrmSearch& Search() { return FSearch; }
  TPopUpWindows& PopUps() { return FPopUps; }

  void AddSection(TfrmKKCommonSectionBase& ioForm) override { FWindow.AddSection(ioForm); }
  void RemoveSection(TfrmKKCommonSectionBase& ioForm) override { FWindow.RemoveSection(ioForm); }
  void ShowSection(TfrmKKCommonSectionBase& ioForm) override;
  void SectionClosed() override;
  void ShowPopUp(TForm& ioForm) override { FPopUps.Take(ioForm); }
  std::vector<TIntf<IToolbarButton>> ToolbarButtons() const override;

 private:
  void OpenSearches();
  void ShowFirstSection();
  void TakeDrop(const TDroppedText& iText);
  /// Whether there is such a file to import; the user is told if not.
  static bool CanImport(const TString& iFileName);
  /// Asks what to take over.
  void Import(const TString& iFileName);
  /// Takes over all of it.
  void ImportAtOnce(const TString& iFileName);
  bool DoClose();
  void ToggleTray();
  void ShowOptions();
  static void ShowAbout();
  void DoSearchClick(TObject* Sender);
  void DoTryExample(TObject* Sender);

  TTrayIcon& FTray;
  std::optional<TExampleShop> FShop;
  TfrmSearch FSearch;
  TIntf<TToolbarButtonSearch> FSearchButton = MakeIntf<TToolbarButtonSearch>();
  TIntf<IToolbarButton> FOptionsButton;
  THostPlugins* FPlugins = nullptr;  ///< from Begin to Leave
  TIntf<IApplication> FApplication;  ///< likewise
  TMainWindow FWindow;
  TPopUpWindows FPopUps;
  std::function<void()> FOnQuit;
  int FShown = 0;  ///< how often a section was brought to the screen
  bool FInTray = false;
};

}  // namespace kk
