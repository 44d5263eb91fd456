#include "host/delivery/calendar/TCalendarFactory.h"

#include "TCalendarTest.h"
#include "host/delivery/calendar/TFolderOutlook.h"

namespace kk {
namespace {

class TCalendarFactoryTest : public TCalendarTest {
 protected:
  std::string CreateFailure() {
    return FailureOf([] { CreateOutlook(); });
  }
};

TEST_F(TCalendarFactoryTest, AddressGoesBeforeTheFolder) {
  FWorld.Set(u"CalendarFolder", FWorld.Folder().File(u"termine"));
  EXPECT_NE(dynamic_cast<TFolderOutlook*>(CreateOutlook().get()), nullptr);
  FWorld.Set(u"CalendarUrl", u"https://a.example/kal/");
  EXPECT_NE(dynamic_cast<TCalDavOutlook*>(CreateOutlook().get()), nullptr);
  FWorld.Set(u"CalendarUrl", u" ");
  EXPECT_NE(dynamic_cast<TFolderOutlook*>(CreateOutlook().get()), nullptr);
}

TEST_F(TCalendarFactoryTest, WithoutBothThereIsNoCalendar) {
  FWorld.Set(u"CalendarFolder", u" ");
  EXPECT_EQ(CreateFailure(),
            "Es ist kein Kalender eingerichtet. Bitte geben Sie in den Einstellungen die Adresse "
            "eines Kalenders (CalendarUrl) oder einen Ordner für Termine (CalendarFolder) an.");
}

TEST_F(TCalendarFactoryTest, AddressesThatAreNoneAreRefused) {
  for (const char16_t* url :
       {u"a.example/kal", u"ftp://a.example/", u"file:///etc/", u"https://anna:pw@a.example/",
        u"https://a.example/?x=1", u"https://a.example/#x", u"https://a.example/\nb"}) {
    FWorld.Set(u"CalendarUrl", url);
    EXPECT_EQ(
        CreateFailure(),
        "Die Adresse des Kalenders (CalendarUrl) ist ungültig; sie muss mit https:// beginnen");
  }
}

TEST_F(TCalendarFactoryTest, FolderIsAFullPath) {
  for (const char16_t* folder : {u"termine", u"~/termine", u"./termine"}) {
    FWorld.Set(u"CalendarFolder", folder);
    EXPECT_EQ(CreateFailure(),
              "Der Ordner für Termine (CalendarFolder) muss ein vollständiger Pfad sein");
  }
}

TEST_F(TCalendarFactoryTest, AfterAStopThereIsNoCalendar) {
  FWorld.Set(u"CalendarFolder", FWorld.Folder().File(u"termine"));
  FFactory.Stop();
  EXPECT_EQ(CreateFailure(), "Abgebrochen, das Programm wird beendet");
}

}  // namespace
}  // namespace kk
