#include <gtest/gtest.h>
#include <sys/stat.h>

#include "host/common/ISecretStore.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/common/TKKIniFile.h"
#include "tests/support/TTempFolder.h"

namespace kk {
namespace {

class TFakeSecrets : public ISecretStore {
 public:
  TString Read(TStringView iSection, TStringView iKey) override {
    return TString(iSection) + u"/" + TString(iKey);
  }
  void Write(TStringView, TStringView, TStringView iValue) override { Written = iValue; }
  TString Written;
};

class SecretStoreTest : public testing::Test {
 protected:
  SecretStoreTest() : Before(SetIniFile(&File)) {}
  ~SecretStoreTest() override { SetIniFile(Before); }

  mode_t Mode() const {
    struct stat info {};
    return stat((Folder.Path() + "/test.ini").c_str(), &info) == 0 ? info.st_mode & 0777 : 0;
  }

  TTempFolder Folder;
  TKKIniFile File{Folder.File(u"test.ini")};
  TKKIniFile* Before;
};

TEST_F(SecretStoreTest, WithoutAnInstalledOneTheSettingsFileIsTheStore) {
  SecretStore().Write(u"Communication", u"SmsToken", u"geheim");
  EXPECT_EQ(File.ReadString(u"Communication", u"SmsToken", u""), u"geheim");
  EXPECT_EQ(SecretStore().Read(u"Communication", u"SmsToken"), u"geheim");
  SecretStore().Write(u"Communication", u"SmsToken", u"");
  EXPECT_FALSE(File.HasKey(u"Communication", u"SmsToken"));
}

TEST_F(SecretStoreTest, TheInstalledStoreIsAskedForEachSecretOfTheSection) {
  TFakeSecrets secrets;
  ISecretStore* const before = SetSecretStore(&secrets);
  const TIniFileSectionCommunication section;
  EXPECT_EQ(section.GetSmtpPassword(), u"Communication/SmtpPassword");
  EXPECT_EQ(section.GetSmsToken(), u"Communication/SmsToken");
  EXPECT_EQ(section.GetCalendarPassword(), u"Communication/CalendarPassword");
  EXPECT_EQ(SetSecretStore(before), &secrets);
}

TEST_F(SecretStoreTest, AFileThatOthersMayReadIsMadeTheUsersAloneBeforeASecretComesIntoIt) {
  Folder.Write(u"test.ini", "[Common]\n");
  ASSERT_EQ(chmod((Folder.Path() + "/test.ini").c_str(), 0644), 0);
  FileSecretStore().Write(u"Communication", u"SmsToken", u"");
  EXPECT_EQ(Mode(), 0644u) << "no secret, no change";
  FileSecretStore().Write(u"Communication", u"SmsToken", u"geheim");
  EXPECT_EQ(Mode(), 0600u);
  EXPECT_EQ(FileSecretStore().Read(u"Communication", u"SmsToken"), u"geheim");
}

TEST_F(SecretStoreTest, ANewFileIsTheUsersAlone) {
  FileSecretStore().Write(u"Communication", u"SmsToken", u"geheim");
  EXPECT_EQ(Mode(), 0600u);
}

}  // namespace
}  // namespace kk
