#pragma once

#include <QAction>
#include <QLabel>
#include <QMainWindow>
#include <QStackedWidget>
#include <functional>
#include <memory>
#include <vector>

#include "apps/desktop/shell/TDroppedText.h"
#include "apps/desktop/skin/TSkin.h"
#include "host/contract/IToolbarExtender.h"
#include "host/controls/TfrmKKCommonSectionBase.h"

namespace kk {

/// The program's window: a menu and one section at a time, each in a skin of its own that is made
/// when the section is first shown. Until there is a section it says what the program is doing.
/// What is dropped anywhere, and what is pasted where no field takes it, goes to an event. Main
/// thread.
class TMainWindow : public QMainWindow {
 public:
  TMainWindow();
  ~TMainWindow() override;

  /// A section can be shown from now on; it is borrowed until RemoveSection.
  void AddSection(TfrmKKCommonSectionBase& ioForm);
  /// No effect if it is not there.
  void RemoveSection(TfrmKKCommonSectionBase& ioForm);
  /// Puts it on the screen, in the place of the one before, which is no longer visible. No effect
  /// if it is not there.
  void ShowSection(TfrmKKCommonSectionBase& ioForm);
  /// Null while there is none on the screen.
  TfrmKKCommonSectionBase* Section() const { return FSection; }
  /// Null if there is none with this id.
  TfrmKKCommonSectionBase* FindSection(TStringView iFormId) const;

  /// What is read while there is no section.
  void SetMessage(TStringView iText);
  /// The menu's way to where the buttons lead: the first ones by Ctrl+1, Ctrl+2 and so on.
  void SetButtons(const std::vector<TIntf<IToolbarButton>>& iButtons);

  /// In front of other windows, as far as the desktop lets it. iActivation: the token of a second
  /// start (XDG_ACTIVATION_TOKEN); it may be empty.
  void ComeToFront(TStringView iActivation = {});

  /// Place, size and section of the last time.
  void RestorePlace();
  void SavePlace();

  /// Raised once, in the turn of the loop behind the first one in which the window was painted.
  void SetOnPainted(std::function<void()> iEvent) { FOnPainted = std::move(iEvent); }
  /// The user closes the window: the receiver answers whether it does so now.
  void SetOnClose(std::function<bool()> iEvent) { FOnClose = std::move(iEvent); }
  void SetOnQuit(std::function<void()> iEvent) { FOnQuit = std::move(iEvent); }
  void SetOnAbout(std::function<void()> iEvent) { FOnAbout = std::move(iEvent); }
  void SetOnTryExample(std::function<void()> iEvent) { FOnTryExample = std::move(iEvent); }
  void SetOnDrop(std::function<void(const TDroppedText&)> iEvent) { FOnDrop = std::move(iEvent); }

 protected:
  void closeEvent(QCloseEvent* iEvent) override;
  void paintEvent(QPaintEvent* iEvent) override;
  bool eventFilter(QObject* iObject, QEvent* iEvent) override;

 private:
  struct TSection {
    TfrmKKCommonSectionBase* Form = nullptr;
    std::unique_ptr<QWidget> Page;  ///< in the stack once it was shown
    std::unique_ptr<TSkin> Skin;
  };
  TSection* Find(const TfrmKKCommonSectionBase& iForm);
  void BuildMenu();
  void ShowTitle();
  void Open(TSection& ioSection);
  void Paste();
  bool Takes(const QWidget& iWidget, QEvent& ioEvent);
  /// The section sends the wheel to what stands under the pointer.
  bool TakeWheel(const QWidget& iWidget, QWheelEvent& ioEvent);
  bool TakeDrop(QEvent& ioEvent, bool iIsField);

  QStackedWidget* FStack;
  QLabel* FMessage;
  QMenu* FView = nullptr;
  std::vector<std::unique_ptr<TSection>> FSections;
  TfrmKKCommonSectionBase* FSection = nullptr;
  bool FWheelTurns = false;
  std::function<void()> FOnPainted;
  std::function<bool()> FOnClose;
  std::function<void()> FOnQuit;
  std::function<void()> FOnAbout;
  std::function<void()> FOnTryExample;
  std::function<void(const TDroppedText&)> FOnDrop;
};

}  // namespace kk
