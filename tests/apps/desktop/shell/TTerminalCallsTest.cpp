#include "apps/desktop/shell/TTerminalCalls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include "apps/desktop/skin/QtText.h"
#include "apps/desktop/skin/TQtMainLoop.h"
#include "host/base/TInstalled.h"
#include "host/contract/TPlugins.h"
#include "host/program/THostClient.h"
#include "host/program/THostServer.h"
#include "tests/support/TFakeApplication.h"
#include "tests/support/TFakeSourcePlugin.h"
#include "tests/support/TFakeWatchlistPlugin.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TurnUntil.h"
#include "tests/support/qt/OffscreenQt.h"

namespace kk {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;

/// The window's process, and a terminal whose lines the test writes and reads.
class TTerminalCallsTest : public testing::Test {
 protected:
  TTerminalCallsTest() {
    NeedQt();
    Plugins().Add(List);
    Plugins().Add(Shop);
    Host.Find();
    Host.Initialize(MakeIntf<TFakeApplication>(true));
    Window = std::make_unique<QWidget>();
    Calls = std::make_unique<TTerminalCalls>(Host, *Window);
  }
  ~TTerminalCallsTest() override {
    Host.Uninitialize();
    Calls.reset();
    Plugins().Clear();
  }

  /// Makes the call, and adds it.
  void Call(std::vector<TString> iWords, bool iIsInteractive = false) {
    THostMessage call = THostClient::First(THostMessage::TKind::Call, std::move(iWords));
    call.IsInteractive = iIsInteractive;
    ASSERT_TRUE(Terminal.Send(call));
    std::shared_ptr<THostPeer> peer;
    ASSERT_TRUE(TurnUntil(Loop, [&] { return (peer = Server.TakeCaller()) != nullptr; }));
    Calls->Add(peer);
  }
  /// Receives up to the end; the exit code, or -1.
  int Receive() {
    EXPECT_TRUE(TurnUntil(Loop, [&] { return !Terminal.Receive(1, Messages); }));
    for (const THostMessage& message : Messages) {
      if (message.Kind == THostMessage::TKind::Exit) return message.ExitCode;
      Lines.push_back(ToUtf8(message.Text));
    }
    return -1;
  }
  static QMessageBox* Dialog() {
    return dynamic_cast<QMessageBox*>(QApplication::activeModalWidget());
  }

  TLogRecorder Log;
  TQtMainLoop Loop;
  TInstalled<TMainLoop> LoopInstalled{&SetMainLoop, &Loop};
  TTempFolder Data;
  TIntf<TFakeWatchlistPlugin> List = MakeIntf<TFakeWatchlistPlugin>();
  TIntf<TFakeSourcePlugin> Shop = MakeIntf<TFakeSourcePlugin>(u"Fakeshop");
  THostPlugins Host;
  std::unique_ptr<QWidget> Window;
  std::unique_ptr<TTerminalCalls> Calls;
  THostServer Server{FromUtf8(Data.Path()), Loop};
  THostClient Terminal{FromUtf8(Data.Path())};
  std::vector<THostMessage> Messages;
  std::vector<std::string> Lines;
};

TEST_F(TTerminalCallsTest, ACommandIsAnsweredWithoutADialog) {
  List->Item(u"Haus", u"Lampe");
  Call({u"list"});
  EXPECT_TRUE(Calls->HasCallers());
  Calls->AnswerAll();
  EXPECT_FALSE(Calls->HasCallers());
  EXPECT_EQ(Dialog(), nullptr);
  EXPECT_EQ(Receive(), 0);
  EXPECT_THAT(Lines, Contains(HasSubstr("Lampe")));
}

TEST_F(TTerminalCallsTest, ADialogOfTheWindowIsNotDisturbed) {
  QMessageBox dialog(Window.get());
  dialog.setModal(true);
  dialog.show();
  Call({u"category", u"add", u"Haus"});
  Calls->AnswerAll();
  EXPECT_TRUE(Calls->HasCallers());
  EXPECT_THAT(List->Calls, IsEmpty());
  dialog.close();
  Calls->AnswerAll();
  EXPECT_EQ(Receive(), 0);
}

TEST_F(TTerminalCallsTest, AQuestionInTheTerminalKeepsTheWindowBusyUntilItIsAnswered) {
  List->Item(u"Haus", u"Lampe");
  Call({u"delete", u"Lampe"}, true);
  bool wasBusy = false;
  const auto timer = Loop.StartTimer(10, [&] {
    Terminal.Receive(0, Messages);
    const bool isAsked = !Messages.empty() && Messages.back().Kind == THostMessage::TKind::Ask;
    if (wasBusy || !isAsked || Dialog() == nullptr) return;
    wasBusy = Calls->IsAnswering();
    Calls->AnswerAll();
    THostMessage answer;
    answer.Kind = THostMessage::TKind::Line;
    answer.Text = u"1";
    Terminal.Send(answer);
  });
  Calls->AnswerAll();
  Loop.StopTimer(timer);
  EXPECT_TRUE(wasBusy);
  EXPECT_EQ(Dialog(), nullptr);
  EXPECT_EQ(Receive(), 0);
  EXPECT_THAT(List->Calls, Contains("Save"));
}

TEST_F(TTerminalCallsTest, TheUserGivesUpACommandThatTakesLong) {
  List->NeverEnds = true;
  List->Item(u"Haus", u"Lampe", Shop->GetId());
  Call({u"refresh"});
  const auto timer = Loop.StartTimer(10, [] {
    if (Dialog() != nullptr) Dialog()->buttons().at(0)->click();
  });
  Calls->AnswerAll();
  Loop.StopTimer(timer);
  EXPECT_EQ(Receive(), 1);
  EXPECT_THAT(Lines, Contains("Abgebrochen."));
}

TEST_F(TTerminalCallsTest, WhoStillWaitsAtTheEndIsTold) {
  Call({u"list"});
  Calls.reset();
  EXPECT_EQ(Receive(), 1);
  EXPECT_THAT(Lines, Contains("Fehler: Kaufkobolde wird gerade beendet."));
}

}  // namespace
}  // namespace kk
