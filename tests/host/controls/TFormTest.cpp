#include "host/controls/TForm.h"

#include <gtest/gtest.h>

#include <memory>

#include "ControlsFixture.h"
#include "host/base/Exception.h"
#include "host/controls/TEdit.h"
#include "host/controls/TLabel.h"
#include "host/controls/TfrmKKCommonSectionBase.h"
#include "tests/support/TScriptedFormHost.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {
namespace {

// A dialog with two buttons, and a message that it may send itself.
class TDialog : public TForm {
 public:
  explicit TDialog(TForm* iOwner = nullptr) : TForm(iOwner, u"TDialog", u"Frage") {}

  TEdit edtName{this, u"edtName"};
  TButton btnOK{this, u"btnOK", u"&OK", cModalOK};
  TButton btnCancel{this, u"btnCancel", u"&Abbrechen", cModalCancel};
  std::vector<int> Messages;
  bool ClosesOnMessage = false;

 protected:
  void UserMessage(int iMessage) override {
    Messages.push_back(iMessage);
    if (ClosesOnMessage) Close();
  }
};

TEST(TForm, IsInvisibleUntilShownAndItsButtonsDead) {
  TDialog form;
  EXPECT_FALSE(form.Visible());
  EXPECT_FALSE(form.btnOK.Click());
  form.Show();
  EXPECT_TRUE(form.btnOK.Click());
  EXPECT_TRUE(form.Visible());
  EXPECT_FALSE(form.IsModal());
}

TEST(TForm, KnowsItsOwnerAndItsPlace) {
  TDialog owner;
  TDialog form(&owner);
  EXPECT_EQ(form.Owner(), &owner);
  EXPECT_FALSE(form.StaysOnTop());
  form.SetStaysOnTop(true);
  EXPECT_TRUE(form.StaysOnTop());
}

TEST(TForm, AModalOneNeedsAHost) {
  TDialog form;
  EXPECT_THROW(form.ShowModal(), Exception);
  EXPECT_FALSE(form.Visible());
  EXPECT_FALSE(form.IsModal());
}

TEST(TForm, EndsWithTheResultOfTheButton) {
  TScriptedFormHost user;
  user.Expect<TDialog>([](TDialog& form) {
    EXPECT_TRUE(form.IsModal());
    EXPECT_TRUE(form.btnOK.Click());
    EXPECT_FALSE(form.IsModal());
    EXPECT_FALSE(form.Visible());
  });
  TDialog form;
  TEventCounter onShow;
  TEventCounter onClose;
  form.SetOnShow(onShow.Event());
  form.SetOnClose(onClose.Event());
  EXPECT_EQ(form.ShowModal(), cModalOK);
  EXPECT_EQ(onShow.Count, 1);
  EXPECT_EQ(onClose.Count, 1);
}

TEST(TForm, ClosingWithoutAButtonIsACancel) {
  TScriptedFormHost user;
  user.ExpectCaption(u"Frage", [](TForm& form) { EXPECT_TRUE(form.CloseByUser()); });
  EXPECT_EQ(TDialog().ShowModal(), cModalCancel);
}

TEST(TForm, CanBeShownAgain) {
  TScriptedFormHost user;
  user.Expect<TDialog>([](TDialog& form) { form.btnOK.Click(); });
  user.Expect<TDialog>([](TDialog& form) { form.btnCancel.Click(); });
  TDialog form;
  EXPECT_EQ(form.ShowModal(), cModalOK);
  EXPECT_EQ(form.ShowModal(), cModalCancel);
  EXPECT_EQ(user.ShownCount(), 2);
}

TEST(TForm, AClickHandlerCanTakeTheResultBack) {
  TScriptedFormHost user;
  TDialog form;
  TEventCounter onClick;
  onClick.OnEvent = [&] {
    EXPECT_EQ(form.ModalResult(), cModalOK);
    form.SetModalResult(cModalNone);
  };
  form.btnOK.SetOnClick(onClick.Event());
  user.Expect<TDialog>([](TDialog& shown) {
    EXPECT_TRUE(shown.btnOK.Click());
    EXPECT_TRUE(shown.IsModal());
    shown.btnCancel.Click();
  });
  EXPECT_EQ(form.ShowModal(), cModalCancel);
}

TEST(TForm, AClickHandlerThatFailsEndsNothing) {
  TScriptedFormHost user;
  TDialog form;
  TEventCounter onClick;
  onClick.OnEvent = [] { throw Exception(u"Kein Platz"); };
  form.btnOK.SetOnClick(onClick.Event());
  user.Expect<TDialog>([](TDialog& shown) {
    EXPECT_THROW(shown.btnOK.Click(), Exception);
    EXPECT_TRUE(shown.IsModal());
    EXPECT_FALSE(shown.EndModalIfDone());
    shown.btnCancel.Click();
  });
  EXPECT_EQ(form.ShowModal(), cModalCancel);
}

TEST(TForm, EndsBehindTheWholeActionOfTheUser) {
  TScriptedFormHost user;
  TDialog form;
  TEventCounter onKey;
  onKey.Swallows = true;
  onKey.OnEvent = [&] {
    form.btnOK.Click();
    EXPECT_TRUE(form.IsModal());
    EXPECT_FALSE(form.EndModalIfDone());
  };
  form.edtName.SetOnKeyPress(onKey.KeyEvent());
  user.Expect<TDialog>([](TDialog& shown) {
    EXPECT_TRUE(shown.edtName.PressKey(cKeyReturn));
    EXPECT_FALSE(shown.IsModal());
  });
  EXPECT_EQ(form.ShowModal(), cModalOK);
}

TEST(TForm, TheCloseCheckCanRefuse) {
  TScriptedFormHost user;
  TDialog form;
  TEventCounter onQuery;
  onQuery.Refuses = true;
  form.SetOnCloseQuery(onQuery.CloseQueryEvent());
  user.Expect<TDialog>([&](TDialog& shown) {
    onQuery.OnEvent = [&] { EXPECT_EQ(shown.ModalResult(), cModalOK); };
    EXPECT_TRUE(shown.btnOK.Click());
    EXPECT_TRUE(shown.IsModal());
    EXPECT_EQ(shown.ModalResult(), cModalNone);
    onQuery.OnEvent = nullptr;
    onQuery.Refuses = false;
    EXPECT_TRUE(shown.btnCancel.Click());
  });
  EXPECT_EQ(form.ShowModal(), cModalCancel);
  EXPECT_EQ(onQuery.Count, 2);
}

TEST(TForm, TheCloseCheckIsNotAskedAgainWhileItIsAsked) {
  TScriptedFormHost user;
  TDialog form;
  TEventCounter onQuery;
  onQuery.OnEvent = [&] { EXPECT_FALSE(form.EndModalIfDone()); };
  form.SetOnCloseQuery(onQuery.CloseQueryEvent());
  user.Expect<TDialog>([](TDialog& shown) { shown.btnOK.Click(); });
  EXPECT_EQ(form.ShowModal(), cModalOK);
  EXPECT_EQ(onQuery.Count, 1);
}

TEST(TForm, NoInputReachesItWhileItShowsAnotherModalWindow) {
  TScriptedFormHost user;
  TDialog form;
  TDialog other;
  TShownForm beside;
  TEdit edtBeside(&beside);
  TEventCounter onQuery;
  onQuery.OnEvent = [&] { EXPECT_EQ(other.ShowModal(), cModalCancel); };
  form.SetOnCloseQuery(onQuery.CloseQueryEvent());
  user.Expect<TDialog>([](TDialog& shown) { shown.btnOK.Click(); });
  user.Expect<TDialog>([&](TDialog& shown) {
    EXPECT_FALSE(form.btnOK.Click());
    EXPECT_FALSE(form.btnCancel.Click());
    EXPECT_FALSE(form.CloseByUser());
    EXPECT_FALSE(form.edtName.EnterText(u"neu"));
    EXPECT_FALSE(form.edtName.PressKey(cKeyEscape));
    EXPECT_TRUE(edtBeside.EnterText(u"neu")) << "a window that is not modal";
    EXPECT_TRUE(shown.btnCancel.Click());
  });
  EXPECT_EQ(form.ShowModal(), cModalOK);
  EXPECT_EQ(onQuery.Count, 1);
}

TEST(TForm, TakesInputAgainWhenTheModalWindowInFrontHasEnded) {
  TScriptedFormHost user;
  TDialog form;
  TDialog other;
  user.Expect<TDialog>([&](TDialog& shown) {
    user.Expect<TDialog>([](TDialog& inner) { inner.btnOK.Click(); });
    EXPECT_EQ(other.ShowModal(), cModalOK);
    EXPECT_TRUE(shown.edtName.EnterText(u"neu"));
    EXPECT_TRUE(shown.btnCancel.Click());
  });
  EXPECT_EQ(form.ShowModal(), cModalCancel);
}

TEST(TForm, ACloseCheckThatFailsKeepsItOpen) {
  TScriptedFormHost user;
  TDialog form;
  TEventCounter onQuery;
  onQuery.OnEvent = [] { throw Exception(u"Kein Platz"); };
  form.SetOnCloseQuery(onQuery.CloseQueryEvent());
  user.Expect<TDialog>([&](TDialog& shown) {
    EXPECT_THROW(shown.btnOK.Click(), Exception);
    EXPECT_EQ(shown.ModalResult(), cModalNone);
    EXPECT_TRUE(shown.IsModal());
    onQuery.OnEvent = nullptr;
    shown.btnOK.Click();
  });
  EXPECT_EQ(form.ShowModal(), cModalOK);
}

TEST(TForm, OneThatIsNotModalAsksTheCloseCheckToo) {
  TDialog form;
  TEventCounter onQuery;
  TEventCounter onClose;
  onQuery.Refuses = true;
  form.SetOnCloseQuery(onQuery.CloseQueryEvent());
  form.SetOnClose(onClose.Event());
  form.Close();
  EXPECT_EQ(onQuery.Count, 0);
  form.Show();
  form.Close();
  EXPECT_TRUE(form.Visible());
  onQuery.Refuses = false;
  EXPECT_TRUE(form.CloseByUser());
  EXPECT_FALSE(form.Visible());
  EXPECT_EQ(onClose.Count, 1);
  EXPECT_FALSE(form.CloseByUser());
}

TEST(TForm, CanEndBeforeTheHostShowsIt) {
  TScriptedFormHost user;
  TDialog form;
  TEventCounter onShow;
  onShow.OnEvent = [&] { form.SetModalResult(cModalOK); };
  form.SetOnShow(onShow.Event());
  EXPECT_EQ(form.ShowModal(), cModalOK);
  EXPECT_EQ(user.ShownCount(), 0);
}

TEST(TForm, PutsTheFocusWhereItCanBe) {
  TDialog form;
  TDialog other;
  TLabel label(&form);
  TPanel panel(&form);
  TButton inPanel(&panel);
  other.Show();
  EXPECT_TRUE(form.SetFocusedControl(&form.edtName));
  EXPECT_FALSE(form.SetFocusedControl(&label));
  EXPECT_FALSE(form.SetFocusedControl(&other.edtName));
  EXPECT_FALSE(form.SetFocusedControl(nullptr));
  panel.SetVisible(false);
  EXPECT_FALSE(form.SetFocusedControl(&inPanel));
  panel.SetVisible(true);
  inPanel.SetEnabled(false);
  EXPECT_FALSE(form.SetFocusedControl(&inPanel));
  EXPECT_EQ(form.FocusedControl(), &form.edtName);
  inPanel.SetEnabled(true);
  EXPECT_FALSE(inPanel.TakeFocus()) << "the window is not on the screen";
  form.Show();
  EXPECT_TRUE(inPanel.TakeFocus());
  EXPECT_EQ(form.FocusedControl(), &inPanel);
}

TEST(TForm, ForgetsControlsThatDie) {
  TDialog form;
  auto panel = std::make_unique<TPanel>(&form);
  TButton inPanel(panel.get());
  auto button = std::make_unique<TButton>(&form);
  form.SetFocusedControl(&inPanel);
  form.SetDefaultButton(button.get());
  form.SetCancelButton(button.get());
  button.reset();
  EXPECT_EQ(form.DefaultButton(), nullptr);
  EXPECT_EQ(form.CancelButton(), nullptr);
  panel.reset();
  EXPECT_EQ(form.FocusedControl(), nullptr);
}

TEST(TForm, AMessageToItselfComesInALaterTurn) {
  TTestMainLoop loop;
  TDialog form;
  form.PostUserMessage(1280);
  EXPECT_TRUE(form.Messages.empty());
  loop.ProcessMessages();
  EXPECT_EQ(form.Messages, std::vector<int>{1280});
}

TEST(TForm, AMessageToOneThatDiedIsLost) {
  TTestMainLoop loop;
  auto form = std::make_unique<TDialog>();
  form->PostUserMessage(1280);
  form.reset();
  loop.ProcessMessages();
  SUCCEED();
}

TEST(TForm, OneThatDoesNotCareForMessagesPassesThemOver) {
  TTestMainLoop loop;
  TShownForm form;
  form.PostUserMessage(1);
  loop.ProcessMessages();
  EXPECT_TRUE(form.Visible());
}

TEST(TForm, ClosesItselfFromAMessageWithinTheModalLoop) {
  TTestMainLoop loop;
  TScriptedFormHost user;
  user.Expect<TDialog>([](TDialog&) {});
  TDialog form;
  form.ClosesOnMessage = true;
  form.PostUserMessage(1);
  EXPECT_EQ(form.ShowModal(), cModalCancel);
  EXPECT_EQ(form.Messages.size(), 1u);
}

// The base of dialogs.
class TLoadingDialog : public TfrmKKCommonBase {
 public:
  TLoadingDialog() : TfrmKKCommonBase(nullptr, u"TLoadingDialog") {}
  int LoadedCount = 0;

 protected:
  void Loaded() override {
    ++LoadedCount;
    SetWhiteBackground(true);
  }
};

TEST(TfrmKKCommonBase, IsLoadedOnceBeforeItIsShown) {
  TLoadingDialog form;
  EXPECT_FALSE(form.WhiteBackground());
  TEventCounter onShow;
  onShow.OnEvent = [&] { EXPECT_EQ(form.LoadedCount, 1); };
  form.SetOnShow(onShow.Event());
  form.Show();
  form.Close();
  form.Show();
  EXPECT_EQ(onShow.Count, 2);
  EXPECT_EQ(form.LoadedCount, 1);
  EXPECT_TRUE(form.WhiteBackground());
}

TEST(TfrmKKCommonBase, NeedsNothingLoaded) {
  TfrmKKCommonBase form(nullptr, u"TfrmKKCommonBase");
  form.Show();
  EXPECT_FALSE(form.WhiteBackground());
}

class TApplicationFake : public TInterfaced<IApplication> {
 public:
  void SectionClosed() override {}
  bool ShowNotificationWindow(TForm*) override { return false; }
};

class TSection : public TfrmKKCommonSectionBase {
 public:
  TSection() : TfrmKKCommonSectionBase(nullptr, u"TSection") {}
  TGuid GetFormID() const override { return cEmptyGuid; }
  TString GetIniSectionName() const override { return u"Section"; }
  using TfrmKKCommonSectionBase::Application;
  int FirstShows = 0;

 protected:
  void FirstShow() override { ++FirstShows; }
};

TEST(TfrmKKCommonSectionBase, KeepsTheApplicationAndShowsFirstOnce) {
  TSection section;
  const TIntf<IApplication> application = MakeIntf<TApplicationFake>();
  section.Initialize(application);
  EXPECT_EQ(section.Application(), application);
  EXPECT_FALSE(section.WasShown());
  section.Show();
  section.Close();
  section.Show();
  EXPECT_TRUE(section.WasShown());
  EXPECT_EQ(section.FirstShows, 1);
  section.MinimizeToTray();
  section.RestoreFromTray();
  EXPECT_TRUE(section.Visible());
  section.Uninitialize();
  EXPECT_EQ(section.Application(), nullptr);
}

}  // namespace
}  // namespace kk
