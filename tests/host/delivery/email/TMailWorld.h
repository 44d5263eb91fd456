#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "host/base/TClock.h"
#include "host/common/TKKCommonEmail.h"
#include "host/common/TKKIniFile.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TServerProcess.h"
#include "tests/support/TTempFolder.h"

namespace kk {

/// A folder with a settings file of its own, and the log.
class TMailWorld : public testing::Test {
 protected:
  TMailWorld() : FBefore(SetIniFile(&FIni)) {}
  ~TMailWorld() override { SetIniFile(FBefore); }

  void Set(TStringView iKey, const std::string& iValue) {
    FIni.WriteString(u"Communication", iKey, FromUtf8(iValue));
  }
  void SetServer(int iPort, const std::string& iScheme = "smtp") {
    Set(u"SmtpUrl", iScheme + "://127.0.0.1:" + std::to_string(iPort));
  }
  void SetLogin(const std::string& iUser, const std::string& iPassword) {
    Set(u"SmtpUser", iUser);
    Set(u"SmtpPassword", iPassword);
  }

  static TEmail Mail(TStringView iSubject = u"Erinnerung", TStringView iBody = u"Text") {
    return {TString(iSubject), TString(iBody), u"to@example.org", u"from@example.org",
            u"Kaufkobolde"};
  }

  TTempFolder FFolder;
  TLogRecorder FLog;
  TKKIniFile FIni{FFolder.File(u"k.ini")};

 private:
  TKKIniFile* FBefore;
};

/// A mail server on loopback, servers/smtp.py, with its options. What it sees it tells in lines of
/// JSON.
class TMailServer {
 public:
  explicit TMailServer(const std::vector<std::string>& iOptions = {})
      : FProcess(TServerProcess::Python("host/delivery/email/servers/smtp.py", iOptions)) {
    const std::string line = FProcess.WaitForLine("PORT ");
    if (!line.empty()) FPort = std::stoi(line.substr(5));
  }

  int Port() const { return FPort; }
  TServerProcess& Process() { return FProcess; }

  /// Waits for the next line about this and answers what it says.
  nlohmann::json WaitFor(const std::string& iWhat) {
    const std::string line = FProcess.WaitForLine("{\"" + iWhat + "\":");
    return line.empty() ? nlohmann::json() : nlohmann::json::parse(line)[iWhat];
  }
  nlohmann::json WaitForMessage() { return WaitFor("message"); }

  /// Ends it; all that it has ever told about this.
  std::vector<nlohmann::json> All(const std::string& iWhat) {
    FProcess.Stop();
    std::vector<nlohmann::json> all;
    std::istringstream lines(FProcess.Output());
    for (std::string line; std::getline(lines, line);) {
      if (line.empty() || line[0] != '{') continue;
      const auto record = nlohmann::json::parse(line);
      if (record.contains(iWhat)) all.push_back(record[iWhat]);
    }
    return all;
  }

 private:
  TServerProcess FProcess;
  int FPort = 0;
};

/// A certificate of its own for these names, made by openssl.
struct TMailCertificate {
  explicit TMailCertificate(const TTempFolder& iFolder,
                            const std::string& iNames = "DNS:localhost,IP:127.0.0.1")
      : Certificate(iFolder.Path() + "/cert.pem"), Key(iFolder.Path() + "/key.pem") {
    TServerProcess openssl({"openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt",
                            "ec_paramgen_curve:prime256v1", "-nodes", "-days", "2", "-subj",
                            "/CN=test", "-addext", "subjectAltName=" + iNames, "-keyout", Key,
                            "-out", Certificate});
    EXPECT_EQ(openssl.Wait(), 0) << openssl.Output();
  }

  std::vector<std::string> Options(const std::string& iTls,
                                   const std::vector<std::string>& iMore = {}) const {
    std::vector<std::string> options = {"--tls", iTls, "--cert", Certificate, "--key", Key};
    options.insert(options.end(), iMore.begin(), iMore.end());
    return options;
  }

  std::string Certificate;
  std::string Key;
};

/// A clock that the test turns while other threads read it.
class TSharedClock : public IClock {
 public:
  TSharedClock() : FBefore(SetClock(this)) {}
  ~TSharedClock() override { SetClock(FBefore); }
  TDateTime Now() const override { return TDateTime::FromMs(FNow.load()); }
  int64_t SteadyMs() const override { return FNow.load(); }
  void Advance(int64_t iMs) { FNow += iMs; }

 private:
  std::atomic<int64_t> FNow{EncodeDateTime({2026, 11, 20, 18, 30, 0, 0}).Ms()};
  IClock* FBefore;
};

/// Equal texts; of others it shows the place where they part.
inline void ExpectSameText(const std::string& iSeen, const std::string& iExpected) {
  const size_t at = static_cast<size_t>(
      std::mismatch(iSeen.begin(), iSeen.end(), iExpected.begin(), iExpected.end()).first -
      iSeen.begin());
  EXPECT_EQ(iSeen.size(), iExpected.size());
  EXPECT_EQ(iSeen.substr(std::min(at, iSeen.size()), 40),
            iExpected.substr(std::min(at, iExpected.size()), 40))
      << "at " << at;
}

/// Waits, within a limit, until something that other threads do has come about.
inline bool Eventually(const std::function<bool()>& iCondition) {
  const auto last = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!iCondition()) {
    if (std::chrono::steady_clock::now() > last) return false;
    std::this_thread::yield();
  }
  return true;
}

/// How long something takes, in milliseconds.
inline int64_t MsOf(const std::function<void()>& iWork) {
  const auto start = std::chrono::steady_clock::now();
  iWork();
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                               start)
      .count();
}

}  // namespace kk
