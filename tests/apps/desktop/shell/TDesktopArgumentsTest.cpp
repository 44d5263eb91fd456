#include "apps/desktop/shell/TDesktopArguments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace kk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using TWords = std::vector<TString>;

TDesktopArguments Parse(const TWords& iWords) { return TDesktopArguments::Parse(iWords); }
TString Here(TStringView iName) {
  return FromUtf8(std::filesystem::current_path().string() + "/") + TString(iName);
}
std::string Complaint(const TWords& iWords) {
  try {
    TDesktopArguments::Parse(iWords);
  } catch (const EDesktopUsage& e) {
    return ToUtf8(e.Message());
  }
  return {};
}

TEST(TDesktopArguments, NoneOpenTheProgram) {
  const auto call = Parse({});
  EXPECT_THAT(call.Words, IsEmpty());
  EXPECT_THAT(call.HostLine, IsEmpty());
  EXPECT_TRUE(call.Data.empty());
  EXPECT_EQ(call.Theme, TThemeChoice::tcSystem);
}

TEST(TDesktopArguments, OptionsStandInEitherForm) {
  const auto call = Parse({u"--data=da", u"--theme", u"Dunkel", u"--verbose"});
  EXPECT_EQ(call.Data, Here(u"da"));
  EXPECT_EQ(call.Theme, TThemeChoice::tcDark);
  EXPECT_TRUE(call.Verbose);
  EXPECT_EQ(Parse({u"--theme=hell"}).Theme, TThemeChoice::tcLight);
  EXPECT_TRUE(Parse({u"--help"}).Help);
  EXPECT_TRUE(Parse({u"--version"}).Version);
}

TEST(TDesktopArguments, WordsAreAddressesAndFilesWithTheirFullPath) {
  EXPECT_THAT(Parse({u"https://a.example/x", u"./liste.wch", u"file:///tmp/l%C3%A4.wch"}).Words,
              ElementsAre(u"https://a.example/x", Here(u"liste.wch"), u"/tmp/lä.wch"));
  EXPECT_THAT(Parse({u"--", u"--seltsam", u""}).Words, ElementsAre(u"--seltsam"));
}

TEST(TDesktopArguments, HostLineTakesAllThatFollows) {
  const auto call = Parse({u"--verbose", u"-rem", u"x y", u"--data", u"z"});
  EXPECT_TRUE(call.Verbose);
  EXPECT_THAT(call.HostLine, ElementsAre(u"-rem", u"x y", u"--data", u"z"));
  EXPECT_THAT(Parse({u"-RemImport", u"./a.wch", u"-rem", u"./a.wch"}).HostLine,
              ElementsAre(u"-RemImport", Here(u"a.wch"), u"-rem", u"./a.wch"));
}

TEST(TDesktopArguments, SessionOfTheToolkitIsPassedOver) {
  EXPECT_THAT(Parse({u"-session", u"1234", u"x.example"}).Words, ElementsAre(u"x.example"));
}

TEST(TDesktopArguments, WhatIsWrongIsSaid) {
  EXPECT_EQ(Complaint({u"--falsch"}), "Unbekannte Option: --falsch");
  EXPECT_EQ(Complaint({u"--data"}), "--data braucht einen Wert.");
  EXPECT_EQ(Complaint({u"--data="}), "--data braucht einen Wert.");
  EXPECT_EQ(Complaint({u"--verbose=ja"}), "--verbose nimmt keinen Wert.");
  EXPECT_THAT(Complaint({u"--theme", u"bunt"}), HasSubstr("nicht \"bunt\""));
}

TEST(TDesktopArguments, GoToTheOtherProcessWithoutTheFolder) {
  const auto again = [](const TWords& iWords) { return Parse(Parse(iWords).ToWords()); };
  EXPECT_THAT(Parse({u"--data", u"x", u"--verbose"}).ToWords(), IsEmpty());
  EXPECT_THAT(again({u"--", u"-a", u"b"}).Words, ElementsAre(u"-a", u"b"));
  EXPECT_THAT(again({u"a", u"-rem", u"b"}).Words, ElementsAre(u"a"));
  EXPECT_THAT(again({u"a", u"-rem", u"b"}).HostLine, ElementsAre(u"-rem", u"b"));
}

TEST(TDesktopArguments, HelpNamesEveryOption) {
  const std::string help = ToUtf8(TDesktopArguments::HelpPage());
  for (const char* option :
       {"--data", "--theme", "--verbose", "--version", "--help", "-rem", "-remimport"}) {
    EXPECT_THAT(help, HasSubstr(option));
  }
}

}  // namespace
}  // namespace kk
