#include "apps/desktop/skin/TQtFormHost.h"

#include <gmock/gmock.h>

#include <QComboBox>
#include <QCommandLinkButton>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTimer>
#include <QTreeView>
#include <optional>

#include "TQtWorld.h"
#include "apps/desktop/skin/TDialog.h"
#include "host/base/Exception.h"
#include "host/base/TInstalled.h"
#include "host/controls/TComboBox.h"
#include "host/controls/TEdit.h"
#include "host/controls/TLabel.h"
#include "host/controls/TOpenDialog.h"
#include "host/controls/TVirtualStringTree.h"
#include "host/controls/TfrmKKCommonMessageDlg.h"
#include "host/controls/TfrmKKCommonWait.h"
#include "host/controls/TfrmMessageDlg.h"
#include "tests/support/TTempFolder.h"

namespace kk {
namespace {

struct TAsk : TForm {
  explicit TAsk(TForm* iOwner = nullptr) : TForm(iOwner, u"frmAsk", u"Frage") {
    SetCancelButton(&btnCancel);
    SetDefaultButton(&btnOK);
  }
  TEdit edtText{this, u"edtText"};
  TButton btnOK{this, u"btnOK", u"&OK", cModalOK};
  TButton btnCancel{this, u"btnCancel", u"&Abbrechen", cModalCancel};
};

class TQtFormHostTest : public TQtWorld {
 protected:
  // What the user does as soon as a window of a modal form stands on the screen.
  void OnNextDialog(std::function<void(TDialog&)> iStep) {
    FLoop.Post([this, iStep] {
      auto* const dialog = dynamic_cast<TDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr || !dialog->isVisible()) return OnNextDialog(iStep);
      iStep(*dialog);
    });
  }
  static QPushButton& ButtonOf(QWidget& ioWindow, const QString& iName) {
    return *ioWindow.findChild<QPushButton*>(iName);
  }

  TQtFormHost FHost;
  TInstalled<IFormHost> FInstalledHost{&SetFormHost, &FHost};
};

TEST_F(TQtFormHostTest, AFormIsAWindowUntilAButtonEndsIt) {
  TAsk form;
  OnNextDialog([&](TDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), u"Frage");
    EXPECT_TRUE(dialog.isModal());
    EXPECT_TRUE(form.IsModal());
    form.SetCaption(u"Frage 2");
    TSkin::Of(form)->Flush();
    EXPECT_EQ(dialog.windowTitle(), u"Frage 2");
    ButtonOf(dialog, QStringLiteral("btnOK")).click();
  });
  EXPECT_EQ(form.ShowModal(), cModalOK);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_EQ(TSkin::Of(form), nullptr);
}

TEST_F(TQtFormHostTest, WhatIsTypedFirstTakesThePlaceOfWhatAFieldSuggests) {
  TAsk form;
  form.edtText.SetText(u"Vorschlag");
  OnNextDialog([](TDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QLineEdit*>()->selectedText(), u"Vorschlag");
    dialog.close();
  });
  form.ShowModal();
  struct TChoose : TForm {
    TChoose() : TForm(nullptr, u"frmChoose", u"Auswahl") { cmbxList.SetEditable(true); }
    TComboBox cmbxList{this, u"cmbxList"};
  } list;
  list.cmbxList.SetText(u"Ohne");
  OnNextDialog([](TDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QComboBox*>()->lineEdit()->selectedText(), u"Ohne");
    dialog.close();
  });
  list.ShowModal();
}

TEST_F(TQtFormHostTest, EscapeReturnAndTheFrameEndItAsTheFormSays) {
  TAsk form;
  OnNextDialog([&](TDialog& dialog) {
    Key(*dialog.focusWidget(), Qt::Key_Escape, {}, QStringLiteral("\x1b"));
  });
  EXPECT_EQ(form.ShowModal(), cModalCancel);
  OnNextDialog([&](TDialog& dialog) {
    EXPECT_EQ(dialog.focusWidget(), TSkin::Of(form)->WidgetOf(form.edtText));
    Key(*dialog.focusWidget(), Qt::Key_Return, {}, QStringLiteral("\r"));
  });
  EXPECT_EQ(form.ShowModal(), cModalOK);
  OnNextDialog([](TDialog& dialog) { dialog.close(); });
  EXPECT_EQ(form.ShowModal(), cModalCancel);
}

TEST_F(TQtFormHostTest, AFormMayRefuseToClose) {
  struct TStubborn : TAsk {
    TStubborn() { SetOnCloseQuery(TCloseQueryEvent::Of<&TStubborn::Query>(this)); }
    void Query(TObject*, bool& ioCanClose) { ioCanClose = ++Asked > 2; }
    int Asked = 0;
  } form;
  OnNextDialog([&](TDialog& dialog) {
    dialog.close();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(form.Asked, 1);
    ButtonOf(dialog, QStringLiteral("btnOK")).click();
    EXPECT_TRUE(dialog.isVisible());
    dialog.close();
  });
  EXPECT_EQ(form.ShowModal(), cModalCancel);
  EXPECT_EQ(form.Asked, 3);
}

TEST_F(TQtFormHostTest, ACloseCheckThatFailsIsShownAndTheWindowStays) {
  struct TFailing : TAsk {
    TFailing() { SetOnCloseQuery(TCloseQueryEvent::Of<&TFailing::Query>(this)); }
    void Query(TObject*, bool&) {
      if (++Asked == 1) throw Exception(u"geht nicht");
    }
    int Asked = 0;
  } form;
  OnNextDialog([&](TDialog&) {
    form.SetModalResult(cModalOK);  // ends with this turn
    OnNextDialog([&](TDialog& box) {
      EXPECT_EQ(box.windowTitle(), u"Fehler");
      OnNextDialog([&](TDialog& dialog) { dialog.close(); });
      ButtonOf(box, QStringLiteral("btnOK")).click();
    });
  });
  EXPECT_EQ(form.ShowModal(), cModalCancel);
  EXPECT_TRUE(FLog.Contains("exception Host: geht nicht"));
}

TEST_F(TQtFormHostTest, AnEventOfTheModelAloneEndsItToo) {
  TAsk form;
  std::thread other;
  OnNextDialog([&](TDialog&) {
    other = std::thread([&] { FLoop.Synchronize([&] { form.SetModalResult(12); }); });
  });
  EXPECT_EQ(form.ShowModal(), 12);
  other.join();
}

TEST_F(TQtFormHostTest, WindowsEndInTheReverseOrder) {
  TAsk outer;
  TAsk inner(&outer);
  OnNextDialog([&](TDialog& first) {
    OnNextDialog([&](TDialog& second) {
      EXPECT_NE(&second, &first);
      ButtonOf(first, QStringLiteral("btnOK")).click();  // behind another one
      EXPECT_EQ(outer.ModalResult(), cModalNone);
      ButtonOf(second, QStringLiteral("btnOK")).click();
    });
    EXPECT_EQ(inner.ShowModal(), cModalOK);
    EXPECT_TRUE(first.isVisible());
    ButtonOf(first, QStringLiteral("btnCancel")).click();
  });
  EXPECT_EQ(outer.ShowModal(), cModalCancel);
}

TEST_F(TQtFormHostTest, ItStandsInFrontOfItsOwnerAndNeverOffTheScreen) {
  TForm owner(nullptr, u"frmOwner");
  TShownForm shown(owner);
  QWidget& window = *shown.Skin().Widget();
  window.setGeometry(200, 150, 400, 300);
  TAsk form(&owner);
  form.SetPosition(TPosition::poOwnerFormCenter);
  OnNextDialog([&](TDialog& dialog) {
    const QPoint off = dialog.geometry().center() - window.geometry().center();
    EXPECT_LT(off.manhattanLength(), 6);
    dialog.close();
  });
  form.ShowModal();
  window.move(-390, -290);
  OnNextDialog([&](TDialog& dialog) {
    EXPECT_GE(dialog.x(), 0);
    EXPECT_GE(dialog.y(), 0);
    dialog.close();
  });
  form.ShowModal();
  form.SetPosition(TPosition::poScreenCenter);
  form.SetStaysOnTop(true);
  OnNextDialog([&](TDialog& dialog) {
    const QPoint off = dialog.geometry().center() - dialog.screen()->availableGeometry().center();
    EXPECT_LT(off.manhattanLength(), 6);
    EXPECT_TRUE(dialog.windowFlags() & Qt::WindowStaysOnTopHint);
    dialog.close();
  });
  form.ShowModal();
}

TEST_F(TQtFormHostTest, ItIsAsLargeAsTheFormSaysButNeverLargerThanTheScreen) {
  TAsk form;
  form.SetMinSize(500, 350);
  OnNextDialog([](TDialog& dialog) {
    EXPECT_GE(dialog.width(), 500);
    EXPECT_GE(dialog.height(), 350);
    EXPECT_FALSE(dialog.verticalScrollBar()->isVisible());
    dialog.close();
  });
  form.ShowModal();
  form.SetMinSize(500, 9000);
  OnNextDialog([](TDialog& dialog) {
    EXPECT_LE(dialog.height(), dialog.screen()->availableGeometry().height());
    EXPECT_TRUE(dialog.verticalScrollBar()->isVisible());
    dialog.close();
  });
  form.ShowModal();
}

TEST_F(TQtFormHostTest, ItGrowsWithItsContent) {
  TAsk form;
  TLabel label(&form, u"lbl", u"kurz");
  OnNextDialog([&](TDialog& dialog) {
    const int height = dialog.height();
    TString text;
    for (int i = 0; i < 300; ++i) text += u"Wort ";
    label.SetCaption(text);
    EXPECT_TRUE(CrankUntil(
        [&] { return dialog.height() > height && !dialog.verticalScrollBar()->isVisible(); }));
    dialog.close();
  });
  form.ShowModal();
}

TEST_F(TQtFormHostTest, ItIsWideEnoughForTheRowsOfItsListUpToABound) {
  struct TChoose : TForm {
    TChoose() : TForm(nullptr, u"frmChoose", u"Auswahl") {
      vstRows.SetOnGetText(TNodeTextEvent::Of<&TChoose::GetText>(this));
      vstRows.AddChild(nullptr, nullptr);
    }
    void GetText(TObject*, TVirtualNode&, TString& oText) { oText = Text; }
    TVirtualStringTree vstRows{this, u"vstRows"};
    TString Text;
  } form;
  const auto widthWith = [&](size_t iLetters) {
    form.Text = TString(iLetters, u'n');
    int width = 0;
    OnNextDialog([&](TDialog& dialog) {
      const auto& list = *dialog.findChild<QTreeView*>();
      const int text = list.fontMetrics().horizontalAdvance(ToQt(form.Text));
      if (iLetters < 90) {
        EXPECT_GE(list.viewport()->width(), text);
      }
      width = dialog.width();
      dialog.close();
    });
    form.ShowModal();
    return width;
  };
  const int narrow = widthWith(10);
  EXPECT_GT(widthWith(80), narrow);
  EXPECT_GT(widthWith(200), widthWith(80));
  EXPECT_EQ(widthWith(400), widthWith(200));
}

TEST_F(TQtFormHostTest, AMessageBoxHasAPictureAndItsText) {
  const auto kinds = {TMsgDlgType::mtWarning, TMsgDlgType::mtError, TMsgDlgType::mtInformation,
                      TMsgDlgType::mtConfirmation};
  for (const TMsgDlgType type : kinds) {
    OnNextDialog([](TDialog& dialog) {
      bool hasPicture = false;
      bool hasText = false;
      for (const QLabel* label : dialog.findChildren<QLabel*>()) {
        hasPicture = hasPicture || !label->pixmap(Qt::ReturnByValue).isNull();
        hasText = hasText || label->text() == u"Wirklich A & B löschen?";
      }
      EXPECT_TRUE(hasPicture && hasText);
      ButtonOf(dialog, QStringLiteral("btnYes")).click();
    });
    EXPECT_EQ(MessageDlg(u"Wirklich A & B löschen?", type, {TMsgDlgBtn::mbYes, TMsgDlgBtn::mbNo}),
              cModalYes);
  }
}

TEST_F(TQtFormHostTest, AQuestionHasTwoLargeButtonsAndNoIsWhatKeysMean) {
  OnNextDialog([](TDialog& dialog) {
    EXPECT_EQ(dialog.findChildren<QCommandLinkButton*>().size(), 2);
    EXPECT_EQ(dialog.focusWidget()->objectName(), u"btnNo");
    Key(*dialog.focusWidget(), Qt::Key_Return, {}, QStringLiteral("\r"));
  });
  EXPECT_FALSE(TfrmKKCommonMessageDlg::Display(nullptr, u"Löschen?", u"&Ja, löschen", u"Weg",
                                               u"&Nein, abbrechen", u"Bleibt"));
}

TEST_F(TQtFormHostTest, AWaitEndsByItselfWhenItsWorkIsDone) {
  std::thread::id worker;
  TfrmKKCommonWait::Run(u"Bitte warten",
                        [&](std::stop_token) { worker = std::this_thread::get_id(); });
  EXPECT_NE(worker, std::this_thread::get_id());
}

TEST_F(TQtFormHostTest, AWaitIsGivenUpByItsButton) {
  bool stopped = false;
  OnNextDialog([](TDialog& dialog) { ButtonOf(dialog, QStringLiteral("btnCancel")).click(); });
  TfrmKKCommonWait::Run(u"Bitte warten", [&](std::stop_token iStop) {
    while (!iStop.stop_requested()) std::this_thread::yield();
    stopped = true;
  });
  EXPECT_TRUE(stopped);
}

class TOpenDialogTest : public TQtFormHostTest {
 protected:
  TOpenDialogTest() { FFolder.Write(u"ton.wav", "x"); }
  void OnFileDialog(std::function<void(QFileDialog&)> iStep) {
    FLoop.Post([this, iStep] {
      auto* const dialog = dynamic_cast<QFileDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return OnFileDialog(iStep);
      iStep(*dialog);
    });
  }
  TTempFolder FFolder;
};

TEST_F(TOpenDialogTest, AFileIsChosen) {
  const TString file = FFolder.File(u"ton.wav");
  TOpenDialog dialog{u"Datei wählen", u"Sounddatei (*.wav)|*.wav;*.ogg|Alle|*", true, file};
  OnFileDialog([](QFileDialog& shown) {
    EXPECT_EQ(shown.windowTitle(), u"Datei wählen");
    EXPECT_EQ(shown.nameFilters(), (QStringList{QStringLiteral("Sounddatei (*.wav *.ogg)"),
                                                QStringLiteral("Alle (*)")}));
    EXPECT_EQ(shown.fileMode(), QFileDialog::ExistingFile);
    static_cast<QDialog&>(shown).done(QDialog::Accepted);
  });
  EXPECT_TRUE(dialog.Execute());
  EXPECT_EQ(dialog.FileName, file);
}

TEST_F(TOpenDialogTest, AFileIsNamedForWriting) {
  TOpenDialog dialog{u"Export", u"Listen (*.wch)|*.wch|Alle (*.*)|*.*", false,
                     FFolder.File(u"Beobachten.wch")};
  dialog.ForSaving = true;
  OnFileDialog([](QFileDialog& shown) {
    EXPECT_EQ(shown.acceptMode(), QFileDialog::AcceptSave);
    EXPECT_EQ(shown.defaultSuffix(), QStringLiteral("wch"));
    EXPECT_FALSE(shown.testOption(QFileDialog::DontConfirmOverwrite));
    static_cast<QDialog&>(shown).done(QDialog::Accepted);
  });
  EXPECT_TRUE(dialog.Execute());
  EXPECT_EQ(dialog.FileName, FFolder.File(u"Beobachten.wch"));
}

TEST_F(TOpenDialogTest, ACancelKeepsTheName) {
  TOpenDialog dialog{u"Datei wählen", u"", false, u"/nirgends/ton.wav"};
  OnFileDialog([](QFileDialog& shown) {
    EXPECT_EQ(shown.fileMode(), QFileDialog::AnyFile);
    shown.reject();
  });
  EXPECT_FALSE(dialog.Execute());
  EXPECT_EQ(dialog.FileName, u"/nirgends/ton.wav");
}

}  // namespace
}  // namespace kk
