#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "host/base/TLocale.h"
#include "host/common/TKKCommonSms.h"
#include "host/common/TKKIniFile.h"
#include "host/common/TOutlook.h"
#include "model/TLstWatchlistCategory.h"
#include "reminders/TRemindDetailsEMail.h"
#include "reminders/TRemindDetailsSMS.h"
#include "reminders/TRemindDetailsSound.h"
#include "reminders/TRemindDetailsWindow.h"
#include "reminders/editor/TfrmKKWatchlistEditItemRemind.h"
#include "tests/support/TFakeSource.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TScriptedFormHost.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestClock.h"
#include "tests/support/TTestModelRoot.h"

namespace kk {

using TEditor = TfrmKKWatchlistEditItemRemind;
using TLines = std::vector<std::string>;

/// The editor's list of kinds.
enum TEditorKind { ekSound, ekWindow, ekEMail, ekOutlook, ekSMS };

/// A service for text messages that notes what it gets: "number|time|message".
class TFakeSms : public ISmsSender {
 public:
  TFakeSms() : FBefore(SetSmsSender(this)) {}
  ~TFakeSms() override { SetSmsSender(FBefore); }

  bool Send(TStringView iMessage, TStringView iNumber, TDateTime iWhen, TSMSResult& oResult,
            TString& oErrorText) override {
    Sent.push_back(ToUtf8(iNumber) + "|" + ToUtf8(DateTimeToIso(iWhen)) + "|" + ToUtf8(iMessage));
    if (!Raises.empty()) throw Exception(Raises);
    oResult = Result;
    oErrorText = Error;
    return Result == TSMSResult::srOk;
  }

  TLines Sent;
  TSMSResult Result = TSMSResult::srOk;
  TString Error;
  TString Raises;

 private:
  ISmsSender* FBefore;
};

/// A calendar that notes what it is told and names its entries "entry 1", "entry 2", ...
class TFakeCalendar : public IOutlookFactory {
 public:
  TFakeCalendar() : FBefore(SetOutlookFactory(this)) {}
  ~TFakeCalendar() override { SetOutlookFactory(FBefore); }

  std::unique_ptr<TOutlook> Create() override {
    if (!RaisesOnCreate.empty()) throw Exception(RaisesOnCreate);
    return std::make_unique<TCalendar>(*this);
  }

  /// "add subject|body|location|flag|start|count", "delete id".
  TLines Calls;
  int Entries = 0;
  bool Deletes = true;
  TString RaisesOnCreate;
  TString RaisesOnAdd;
  /// From this add on, counted from 1; 0 for all.
  int RaisesFrom = 0;
  TString RaisesOnDelete;

 private:
  class TCalendar : public TOutlook {
   public:
    explicit TCalendar(TFakeCalendar& ioWorld) : FWorld(ioWorld) {}

    TString AddAppointment(TStringView iSubject, TStringView iBody, TStringView iLocation,
                           int iFlag, TDateTime iStart, int iCount) override {
      FWorld.Calls.push_back(
          ToUtf8(Format(u"add %s|%s|%s|%d|%s|%d",
                        {iSubject, iBody, iLocation, iFlag, DateTimeToIso(iStart), iCount})));
      const int number = ++FWorld.Entries;
      if (!FWorld.RaisesOnAdd.empty() && number >= FWorld.RaisesFrom) {
        throw Exception(FWorld.RaisesOnAdd);
      }
      return Format(u"entry %d", {number});
    }
    bool DeleteAppointment(TStringView iEntryId) override {
      FWorld.Calls.push_back("delete " + ToUtf8(iEntryId));
      if (!FWorld.RaisesOnDelete.empty()) throw Exception(FWorld.RaisesOnDelete);
      return FWorld.Deletes;
    }

   private:
    TFakeCalendar& FWorld;
  };

  IOutlookFactory* FBefore;
};

/// Watched articles of one source, a list of reminders to edit, and the user in front of the
/// editor. It is 2026-11-20, 18:30:00.250; "remind.wav", the default sound, is there.
class TEditorWorld : public testing::Test {
 protected:
  TEditorWorld() {
    SetLocaleName("de_DE");
    FClock.Advance(250);
    FFolder.Write(u"remind.wav", "sound");
  }
  ~TEditorWorld() override {
    SetIniFile(FBefore);
    SetLocaleName("");
  }

  /// A watched article "Uhr", "Uhr 2", ... with a reminder to edit; its auction ends so many
  /// minutes after now, or it has no end.
  TRemindItemForEdit& Add(int iEndsInMinutes = 24 * 60) {
    TString name = u"Uhr";
    if (FLst.GetCount() > 0) name += u" " + IntToStr(FLst.GetCount() + 1);
    const auto result = FakeResult(name);
    auto item = std::make_unique<TWatchlistItem>();
    item->SetSearchResult(result);
    Group().LstItem().Add(std::move(item));
    return AddReminder(result->GetId(), iEndsInMinutes);
  }
  /// A reminder for an article that need not be there.
  TRemindItemForEdit& AddReminder(const TGuid& iId, int iEndsInMinutes) {
    TRemindItemForEdit& reminder = FLst.Add(std::make_unique<TRemindItemForEdit>(iId));
    if (iEndsInMinutes != 0) reminder.SetEndDate(In(iEndsInMinutes * 60));
    return reminder;
  }
  TWatchlistPlugin& Group() {
    if (FRoot.RootCategories().GetCount() == 0) {
      auto category = std::make_unique<TWatchlistCategory>();
      category->LstPlugin().Add(std::make_unique<TWatchlistPlugin>(FSource));
      FRoot.RootCategories().Add(std::move(category));
    }
    return FRoot.RootCategories().GetItems(0).LstPlugin().GetItems(0);
  }

  /// So many seconds after 18:30:00.
  static TDateTime In(int iSeconds) {
    return EncodeDateTime({2026, 11, 20, 18, 30, 0, 0}).PlusMs(iSeconds * TDateTime::cMsPerSecond);
  }

  /// The user works in the editor; without an OK of his own he leaves it.
  bool Edit(std::function<void(TEditor&)> iStep) {
    FHost.Expect<TEditor>([step = std::move(iStep)](TEditor& form) {
      step(form);
      if (form.IsModal()) form.btnCancel.Click();
    });
    return TEditor::Display(nullptr, FLst);
  }
  /// The user does this and presses OK.
  bool EditAndAccept(std::function<void(TEditor&)> iStep = [](TEditor&) {}) {
    return Edit([step = std::move(iStep)](TEditor& form) {
      step(form);
      form.btnOK.Click();
    });
  }
  /// The next window is an error with one button.
  void ExpectError(TStringView iText) {
    FHost.Expect<TfrmMessageDlg>([text = ToUtf8(iText)](TfrmMessageDlg& box) {
      EXPECT_EQ(ToUtf8(box.Text()), text);
      EXPECT_EQ(box.Type(), TMsgDlgType::mtError);
      ASSERT_EQ(box.pnlButtons.Children().size(), 1u);
      box.Button(TMsgDlgBtn::mbOK)->Click();
    });
  }
  /// OK shows this, and the editor stays.
  void ExpectRefusal(TEditor& ioForm, TStringView iText) {
    ExpectError(iText);
    ioForm.btnOK.Click();
    EXPECT_TRUE(ioForm.IsModal());
    EXPECT_EQ(ioForm.ModalResult(), cModalNone);
  }

  void Store(TStringView iKey, TStringView iValue) {
    FFile.WriteString(u"Watchlist", iKey, iValue);
  }
  void StoreHost(TStringView iKey, TStringView iValue) {
    FFile.WriteString(u"Communication", iKey, iValue);
  }
  std::string Stored(TStringView iKey) const {
    return ToUtf8(FFile.ReadString(u"Watchlist", iKey, u"-"));
  }
  void SetUpEMail() {
    StoreHost(u"EMail", u"ich@beispiel.test");
    StoreHost(u"EMailConfirmed", u"1");
  }

  TTempFolder FFolder{true};
  TKKIniFile FFile{FFolder.File(u"settings.ini")};
  TKKIniFile* FBefore = SetIniFile(&FFile);
  TTestClock FClock;
  TLogRecorder FLog;
  TScriptedFormHost FHost;
  TFakeSms FSms;
  TFakeCalendar FCalendar;
  TTestModelRoot FRoot;
  TIntf<TFakeSource> FSource = MakeIntf<TFakeSource>(u"Quelle");
  TLstRemindItemForEdit FLst;
};

/// "TRemindDetailsSound remind.wav", "TRemindDetailsWindow caption|text|link", ...: the details of
/// a reminder in order.
inline TLines DetailsOf(const TRemindItem& iItem) {
  TLines lines;
  const auto texts = [&lines](const auto* iDetails) {
    if (iDetails == nullptr) return;
    lines.push_back(ToUtf8(iDetails->ClassName() + u" " + iDetails->Caption() + u"|" +
                           iDetails->Text() + u"|" + iDetails->Link()));
  };
  for (const TRemindDetailsBase* details : iItem.LstDetails()) {
    if (const auto* sound = dynamic_cast<const TRemindDetailsSound*>(details)) {
      lines.push_back("TRemindDetailsSound " + ToUtf8(sound->SoundFile()));
    }
    if (const auto* sms = dynamic_cast<const TRemindDetailsSMS*>(details)) {
      lines.push_back("TRemindDetailsSMS " + ToUtf8(sms->Text()));
    }
    texts(dynamic_cast<const TRemindDetailsWindow*>(details));
    texts(dynamic_cast<const TRemindDetailsEMail*>(details));
    texts(dynamic_cast<const TRemindDetailsOutlook*>(details));
  }
  return lines;
}

}  // namespace kk
