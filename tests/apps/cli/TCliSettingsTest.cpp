#include "apps/cli/TCliSettings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "TFakeConsole.h"
#include "apps/cli/ECliUsage.h"
#include "host/common/ISecretStore.h"
#include "host/common/TIniFileSectionBase.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/common/TKKIniFile.h"
#include "tests/support/TTempFolder.h"

namespace kk {
namespace {

using enum TSettingsKeyType;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct TChangeCounter {
  void DoChange(TObject*) { ++Changes; }
  int Changes = 0;
};

class TCliSettingsTest : public testing::Test {
 protected:
  TCliSettingsTest() : Before(SetIniFile(&File)) {}
  ~TCliSettingsTest() override { SetIniFile(Before); }

  void Run(std::initializer_list<TString> iWords) {
    const std::vector<TSettingsKeyInfo> keys = {
        {u"Watchlist", u"CategoryTreeWidth", sktInteger, u"220", 50, 500, u"Breite", false},
        {u"Watchlist", u"ShowAddDialog", sktBoolean, u"1", 0, 1, u"Frage", false},
        {u"Watchlist", u"SoundFile", sktString, u"/x.wav", 0, 0, u"Sound", false},
        {u"Watchlist", u"DefaultCategory", sktString, u"", 0, 0, u"Vorgabe", true}};
    TCliSettings(Console, keys, {}).Run(TCliArguments::Parse(std::vector<TString>(iWords)));
  }
  std::string Refusal(std::initializer_list<TString> iWords) {
    try {
      Run(iWords);
    } catch (const ECliUsage& e) {
      return ToUtf8(e.Message() + u" | " + e.Hint());
    }
    return "accepted";
  }
  std::string Get(TStringView iKey) {
    Run({u"settings", u"get", u"Watchlist", TString(iKey)});
    return Console.Printed().back();
  }

  TTempFolder Folder;
  TKKIniFile File{Folder.File(u"test.ini")};
  TKKIniFile* Before;
  TFakeConsole Console;
};

TEST_F(TCliSettingsTest, GetAnswersTheDefaultOfWhatIsNotSet) {
  EXPECT_EQ(Get(u"CategoryTreeWidth"), "220");
  EXPECT_EQ(Get(u"ShowAddDialog"), "1");
  EXPECT_EQ(Get(u"SoundFile"), "/x.wav");
}

TEST_F(TCliSettingsTest, GetAnswersWhatTheProgramMakesOfTheFile) {
  File.WriteString(u"Watchlist", u"CategoryTreeWidth", u"9999");
  EXPECT_EQ(Get(u"CategoryTreeWidth"), "500");
  File.WriteString(u"Watchlist", u"CategoryTreeWidth", u"breit");
  EXPECT_EQ(Get(u"CategoryTreeWidth"), "220");
  File.WriteString(u"Watchlist", u"ShowAddDialog", u"false");
  EXPECT_EQ(Get(u"ShowAddDialog"), "0");
  File.WriteString(u"Watchlist", u"ShowAddDialog", u"quatsch");
  EXPECT_EQ(Get(u"ShowAddDialog"), "1");
}

TEST_F(TCliSettingsTest, NamesAreFoundWithoutRegardToCase) {
  Run({u"settings", u"set", u"watchlist", u"categorytreewidth", u"300"});
  EXPECT_EQ(File.ReadString(u"Watchlist", u"CategoryTreeWidth", u""), u"300");
}

TEST_F(TCliSettingsTest, SetTellsThatSettingsHaveChanged) {
  TChangeCounter counter;
  const auto event = TNotifyEvent::Of<&TChangeCounter::DoChange>(&counter);
  File.AddNotifyOnChange(event);
  Run({u"settings", u"set", u"Watchlist", u"SoundFile", u"/y.wav"});
  File.RemoveNotifyOnChange(event);
  EXPECT_EQ(counter.Changes, 1);
  EXPECT_EQ(Get(u"SoundFile"), "/y.wav");
}

TEST_F(TCliSettingsTest, SetToTheDefaultTakesTheKeyOut) {
  Run({u"settings", u"set", u"Watchlist", u"CategoryTreeWidth", u"300"});
  Run({u"settings", u"set", u"Watchlist", u"CategoryTreeWidth", u"0220"});
  EXPECT_FALSE(File.HasKey(u"Watchlist", u"CategoryTreeWidth"));
}

TEST_F(TCliSettingsTest, BooleansAreTakenInSeveralWords) {
  for (const TString word : {u"0", u"false", u"Nein", u" aus "}) {
    File.DeleteKey(u"Watchlist", u"ShowAddDialog");
    Run({u"settings", u"set", u"Watchlist", u"ShowAddDialog", word});
    EXPECT_EQ(File.ReadString(u"Watchlist", u"ShowAddDialog", u""), u"0") << ToUtf8(word);
  }
  for (const TString word : {u"1", u"TRUE", u"ja", u"an"}) {
    Run({u"settings", u"set", u"Watchlist", u"ShowAddDialog", word});
    EXPECT_EQ(Get(u"ShowAddDialog"), "1") << ToUtf8(word);
  }
}

TEST_F(TCliSettingsTest, BothBoundsOfARangeAreTaken) {
  Run({u"settings", u"set", u"Watchlist", u"CategoryTreeWidth", u"50"});
  EXPECT_EQ(Get(u"CategoryTreeWidth"), "50");
  Run({u"settings", u"set", u"Watchlist", u"CategoryTreeWidth", u"500"});
  EXPECT_EQ(Get(u"CategoryTreeWidth"), "500");
}

TEST_F(TCliSettingsTest, WrongValuesAreRefusedWithTheRange) {
  for (const TString value : {u"49", u"501", u"breit", u"", u"99999999999999999999"}) {
    EXPECT_EQ(Refusal({u"settings", u"set", u"Watchlist", u"CategoryTreeWidth", value}),
              "CategoryTreeWidth nimmt nur eine ganze Zahl von 50 bis 500. | Vorgabe: 220")
        << ToUtf8(value);
  }
  EXPECT_THAT(Refusal({u"settings", u"set", u"Watchlist", u"ShowAddDialog", u"vielleicht"}),
              HasSubstr("ShowAddDialog nimmt nur 1 oder 0."));
  EXPECT_EQ(Folder.Names(), std::vector<std::string>{}) << "nothing was written";
}

TEST_F(TCliSettingsTest, UnknownSectionsAndKeysAreRefusedWithTheKnownOnes) {
  EXPECT_EQ(Refusal({u"settings", u"get", u"Unfug", u"A"}),
            "Den Abschnitt gibt es nicht: Unfug | Abschnitte: General Common Communication "
            "Watchlist");
  EXPECT_THAT(Refusal({u"settings", u"list", u"Unfug"}), HasSubstr("gibt es nicht"));
  const std::string refusal = Refusal({u"settings", u"get", u"Watchlist", u"A"});
  EXPECT_THAT(refusal, HasSubstr("Den Schlüssel gibt es im Abschnitt Watchlist nicht: A"));
  EXPECT_THAT(refusal, HasSubstr("CategoryTreeWidth"));
  EXPECT_THAT(refusal, HasSubstr("DefaultCategory mit einer Nummer dahinter"));
}

TEST_F(TCliSettingsTest, ListShowsSectionsValuesAndRanges) {
  File.WriteString(u"Watchlist", u"CategoryTreeWidth", u"300");
  Run({u"settings", u"list"});
  EXPECT_THAT(Console.Printed(), Contains("[General]"));
  EXPECT_THAT(Console.Printed(),
              Contains("CategoryTreeWidth=300  (50 bis 500; Vorgabe: 220) Breite"));
  EXPECT_THAT(Console.Printed(), Contains("ShowAddDialog=1  (0 oder 1; Vorgabe) Frage"));
}

TEST_F(TCliSettingsTest, ListOfOneSection) {
  Run({u"settings", u"list", u"general"});
  EXPECT_THAT(Console.Printed(),
              ElementsAre("[General]", HasSubstr("DelayedStart=1"), HasSubstr("CloseToTray=0"),
                          HasSubstr("StartInTray=0")));
}

TEST_F(TCliSettingsTest, NumberedKeysAreThoseOfTheFile) {
  File.WriteString(u"Watchlist", u"DefaultCategory0", u"a;b");
  File.WriteString(u"Watchlist", u"DefaultCategory12", u"c;d");
  File.WriteString(u"Watchlist", u"DefaultCategoryX", u"e;f");
  Run({u"settings", u"list", u"Watchlist"});
  EXPECT_THAT(Console.Printed(), Contains(HasSubstr("DefaultCategory0=a;b")));
  EXPECT_THAT(Console.Printed(), Contains(HasSubstr("DefaultCategory12=c;d")));
  EXPECT_THAT(Console.Printed(), testing::Not(Contains(HasSubstr("DefaultCategoryX"))));
  EXPECT_EQ(Get(u"defaultcategory12"), "c;d");
  EXPECT_THAT(Refusal({u"settings", u"get", u"Watchlist", u"DefaultCategory"}),
              HasSubstr("gibt es im Abschnitt"));
}

TEST_F(TCliSettingsTest, ListAsJson) {
  Run({u"settings", u"list", u"Watchlist", u"--json"});
  const auto list = nlohmann::json::parse(Console.Printed().at(0));
  EXPECT_EQ(list[0], nlohmann::json({{"section", "Watchlist"},
                                     {"key", "CategoryTreeWidth"},
                                     {"type", "integer"},
                                     {"value", "220"},
                                     {"default", "220"},
                                     {"isDefault", true},
                                     {"min", 50},
                                     {"max", 500},
                                     {"meaning", "Breite"}}));
  EXPECT_EQ(list[1]["type"], "boolean");
  EXPECT_EQ(list[2]["type"], "string");
}

class TCliSecretTest : public TCliSettingsTest {
 protected:
  TString InFile() const { return File.ReadString(u"Communication", u"SmtpPassword", u""); }
  static constexpr TStringView cKey = u"SmtpPassword";
};

TEST_F(TCliSecretTest, ASecretIsSetAndNeverShown) {
  Run({u"settings", u"set", u"communication", u"smtppassword", u" p4=ss "});
  EXPECT_EQ(InFile(), u" p4=ss ");
  EXPECT_EQ(Console.Printed().back(),
            "SmtpPassword steht jetzt in der Einstellungsdatei, die nur Sie lesen können: " +
                Folder.Path() + "/test.ini");
  Run({u"settings", u"get", u"Communication", u"SmtpPassword"});
  EXPECT_EQ(Console.Printed().back(), "(gesetzt)");
  Run({u"settings", u"list", u"Communication"});
  EXPECT_THAT(Console.Printed(), Contains("SmtpPassword=(gesetzt)  (geheim; Vorgabe: ) Kennwort am "
                                          "Postausgang"));
  EXPECT_THAT(Console.Printed(), Contains("SmsToken=(leer)  (geheim; Vorgabe) Zugangsschlüssel des "
                                          "SMS-Dienstes"));
  Run({u"settings", u"list", u"--json"});
  EXPECT_THAT(Console.Printed().back(), HasSubstr("\"value\": \"(gesetzt)\""));
  EXPECT_THAT(Console.Printed(), testing::Each(testing::Not(HasSubstr("p4=ss"))));
}

TEST_F(TCliSecretTest, WithoutAValueItIsAskedForWithoutShowingIt) {
  Console.Answer({u"geheim\r"});
  Run({u"settings", u"set", u"Communication", u"SmtpPassword"});
  EXPECT_EQ(InFile(), u"geheim");
  EXPECT_THAT(Console.SecretPrompts(), ElementsAre("Kennwort am Postausgang: "));
  EXPECT_THAT(Console.Complained(), IsEmpty()) << "nobody else has seen it";
}

TEST_F(TCliSecretTest, NothingEnteredLeavesTheSecretAsItIs) {
  FileSecretStore().Write(u"Communication", cKey, u"alt");
  for (const bool ends : {true, false}) {
    if (!ends) Console.Answer({u""});
    try {
      Run({u"settings", u"set", u"Communication", u"SmtpPassword"});
      ADD_FAILURE() << "taken";
    } catch (const Exception& e) {
      EXPECT_EQ(e.Message(),
                u"Es wurde nichts eingegeben. SmtpPassword bleibt, wie es ist; der Wert \"\" "
                u"entfernt es.");
    }
    EXPECT_EQ(InFile(), u"alt");
  }
}

TEST_F(TCliSecretTest, AnEmptyValueTakesTheSecretAway) {
  FileSecretStore().Write(u"Communication", cKey, u"alt");
  Run({u"settings", u"set", u"Communication", u"SmtpPassword", u""});
  EXPECT_FALSE(File.HasKey(u"Communication", cKey));
  EXPECT_EQ(Console.Printed().back(), "SmtpPassword ist entfernt.");
}

TEST_F(TCliSecretTest, WhatTheKeyringTakesIsSaidToLieThere) {
  class TKeyring : public ISecretStore {
   public:
    TString Read(TStringView, TStringView) override { return Value; }
    void Write(TStringView, TStringView, TStringView iValue) override { Value = iValue; }
    TString Value;
  } keyring;
  ISecretStore* const before = SetSecretStore(&keyring);
  Run({u"settings", u"set", u"Communication", u"SmtpPassword", u"geheim"});
  SetSecretStore(before);
  EXPECT_EQ(keyring.Value, u"geheim");
  EXPECT_EQ(Console.Printed().back(), "SmtpPassword liegt jetzt im Schlüsselbund.");
  EXPECT_THAT(Console.Complained(), ElementsAre(HasSubstr("Ohne WERT wird verdeckt")));
}

TEST_F(TCliSettingsTest, OnlyASecretMayBeSetWithoutAValue) {
  EXPECT_THAT(Refusal({u"settings", u"set", u"Communication", u"EMail"}),
              testing::AllOf(HasSubstr("Es fehlt der Wert."), HasSubstr("settings set ABSCHNITT")));
  EXPECT_THAT(Console.Prompts(), testing::IsEmpty());
}

TEST_F(TCliSettingsTest, AddressesAreCheckedBeforeTheyAreStored) {
  EXPECT_THAT(Refusal({u"settings", u"set", u"Communication", u"EMail", u"a@b.example, c@d"}),
              testing::AllOf(HasSubstr("EMail nimmt genau eine E-Mail-Adresse"),
                             HasSubstr("| EMail: Adresse für Erinnerungen per E-Mail")));
  for (const TString key : {u"SmtpUrl", u"SmsUrl", u"CalendarUrl"}) {
    EXPECT_THAT(Refusal({u"settings", u"set", u"Communication", key, u"ftp://x.example"}),
                HasSubstr(ToUtf8(key) + " nimmt nur"));
  }
  EXPECT_EQ(Folder.Names(), std::vector<std::string>{}) << "nothing was written";
  EXPECT_EQ(Refusal({u"settings", u"set", u"Watchlist", u"SoundFile", u"  x  "}), "accepted");
  EXPECT_EQ(Get(u"SoundFile"), "  x  ") << "other sections take what they are given";
}

TEST_F(TCliSettingsTest, AnotherAddressIsToBeConfirmed) {
  TIniFileSectionCommunication section;
  Run({u"settings", u"set", u"Communication", u"EMail", u" a@b.example "});
  EXPECT_THAT(Console.Printed().back(),
              HasSubstr("a@b.example ist noch nicht bestätigt. \"kaufkobolde-cli settings "
                        "confirm-email\" schickt einen Code dorthin."));
  section.SetEMailConfirmed();
  section.SetEMailCode(u"x");
  const size_t printed = Console.Printed().size();
  Run({u"settings", u"set", u"Communication", u"EMail", u"a@b.example"});
  EXPECT_EQ(Console.Printed().size(), printed) << "the same address stays confirmed";
  EXPECT_EQ(section.GetEMailCode(), u"x");
  Run({u"settings", u"set", u"Communication", u"EMail", u"c@d.example"});
  TString address;
  EXPECT_FALSE(section.GetEMail(address));
  EXPECT_EQ(address, u"c@d.example");
  EXPECT_EQ(section.GetEMailCode(), u"");
  Run({u"settings", u"set", u"Communication", u"EMail", u""});
  EXPECT_FALSE(File.HasKey(u"Communication", u"EMail"));
}

TEST_F(TCliSettingsTest, AnAddressIsConfirmedByItsCodeAloneAndTakenBackByHand) {
  Run({u"settings", u"set", u"Communication", u"EMail", u"a@b.example"});
  for (const TString value : {u"1", u"ja"}) {
    EXPECT_THAT(Refusal({u"settings", u"set", u"communication", u"emailconfirmed", value}),
                HasSubstr("Eine Adresse bestätigt nur der Code"));
  }
  TString address;
  EXPECT_FALSE(TIniFileSectionCommunication().GetEMail(address));
  TIniFileSectionCommunication().SetEMailConfirmed();
  Run({u"settings", u"set", u"Communication", u"EMailConfirmed", u"0"});
  EXPECT_FALSE(TIniFileSectionCommunication().GetEMail(address));
}

TEST_F(TCliSettingsTest, TheHostsOwnKeysAreThoseThatItsSectionsRead) {
  Run({u"settings", u"set", u"General", u"DelayedStart", u"0"});
  EXPECT_FALSE(TIniFileSectionGeneral().GetDelayedStart());
  Run({u"settings", u"set", u"Common", u"PathToLastImExport", u"/x"});
  EXPECT_EQ(TIniFileSectionCommon().PathToLastImExport(), u"/x");
  Run({u"settings", u"set", u"Communication", u"EMail", u"a@b.example"});
  TIniFileSectionCommunication().SetEMailConfirmed();
  Run({u"settings", u"set", u"Communication", u"SMS", u"+49 1"});
  Run({u"settings", u"set", u"Communication", u"NotifierPosition", u"2"});
  const TIniFileSectionCommunication section;
  TString address;
  EXPECT_TRUE(section.GetEMail(address));
  EXPECT_EQ(address, u"a@b.example");
  EXPECT_EQ(section.GetSMS(), u"+49 1");
  EXPECT_EQ(section.GetNotifierPosition(), 2);
}

}  // namespace
}  // namespace kk
