#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/TServerProcess.h"
#include "tests/support/TTempFolder.h"

namespace kk {

/// A Radicale on loopback with one user, "anna" with the password "geheim", who has one calendar.
/// With iOverTls it speaks https, under a certificate that nobody vouches for.
class TRadicale {
 public:
  explicit TRadicale(bool iOverTls = false) : FScheme(iOverTls ? "https" : "http") {
    std::filesystem::create_directories(Collection());
    FFolder.Write(u"store/collection-root/anna/kal/.Radicale.props", R"({"tag":"VCALENDAR"})");
    FFolder.Write(u"users", "anna:geheim\n");
    std::string server = "[server]\nhosts = 127.0.0.1:0\n";
    if (iOverTls) server += Certificate();
    FFolder.Write(u"config", server + "[auth]\ntype = htpasswd\ndelay = 0\nhtpasswd_filename = " +
                                 Path("users") + "\nhtpasswd_encryption = plain\n" +
                                 "[storage]\nfilesystem_folder = " + Path("store") +
                                 "\n[logging]\nlevel = info\n");
    FProcess = std::make_unique<TServerProcess>(
        std::vector<std::string>{"radicale", "--config", Path("config")});
    std::string line;
    const std::string mark = "Listening on '[127.0.0.1]:";
    do {
      line = FProcess->WaitForLine("[");
    } while (!line.empty() && line.find(mark) == std::string::npos);
    if (!line.empty()) FPort = std::stoi(line.substr(line.find(mark) + mark.size()));
  }

  int Port() const { return FPort; }
  std::string Address(const std::string& iCollection = "anna/kal/") const {
    return FScheme + "://127.0.0.1:" + std::to_string(FPort) + "/" + iCollection;
  }
  TServerProcess& Process() { return *FProcess; }

  /// The appointments that it has stored, byte for byte.
  std::vector<std::string> Stored() const {
    std::vector<std::string> all;
    for (const auto& entry : std::filesystem::directory_iterator(Collection())) {
      if (entry.path().extension() != ".ics") continue;
      all.push_back(FFolder.Read(
          FromUtf8("store/collection-root/anna/kal/" + entry.path().filename().string())));
    }
    return all;
  }

 private:
  std::string Path(const std::string& iName) const { return FFolder.Path() + "/" + iName; }
  std::string Collection() const { return Path("store/collection-root/anna/kal"); }
  std::string Certificate() const {
    TServerProcess openssl({"openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days",
                            "2", "-subj", "/CN=127.0.0.1", "-addext", "subjectAltName=IP:127.0.0.1",
                            "-keyout", Path("key.pem"), "-out", Path("certificate.pem")});
    EXPECT_EQ(openssl.Wait(), 0) << openssl.Output();
    return "ssl = True\ncertificate = " + Path("certificate.pem") + "\nkey = " + Path("key.pem") +
           "\n";
  }

  std::string FScheme;
  TTempFolder FFolder;
  std::unique_ptr<TServerProcess> FProcess;
  int FPort = 0;
};

}  // namespace kk
