#include "tests/support/TSessionBus.h"

#include <cstdlib>

namespace kk {

namespace {

// No folders of services: a keyring of the machine is not started on this bus.
constexpr char cBeforeFolder[] = R"(<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <auth>EXTERNAL</auth>
  <listen>unix:dir=)";
constexpr char cBehindFolder[] = R"(</listen>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

}  // namespace

TSessionBus::TSessionBus() {
  FFolder.Write(u"bus.conf", cBeforeFolder + FFolder.Path() + cBehindFolder);
  FDaemon = std::make_unique<TServerProcess>(
      std::vector<std::string>{"dbus-daemon", "--nofork", "--print-address",
                               "--config-file=" + FFolder.Path() + "/bus.conf"});
  FAddress = FDaemon->WaitForLine("unix:");
}

std::map<std::string, std::string> TSessionBus::Environment() const {
  return {{"DBUS_SESSION_BUS_ADDRESS", FAddress}, {"XDG_RUNTIME_DIR", FFolder.Path()}};
}

TTestEnvironment::TTestEnvironment(const std::map<std::string, std::string>& iValues) {
  for (const auto& [name, value] : iValues) {
    const char* const before = std::getenv(name.c_str());
    FBefore[name] = before == nullptr ? std::nullopt : std::optional<std::string>(before);
    setenv(name.c_str(), value.c_str(), 1);
  }
}

TTestEnvironment::~TTestEnvironment() {
  for (const auto& [name, value] : FBefore) {
    if (value) {
      setenv(name.c_str(), value->c_str(), 1);
    } else {
      unsetenv(name.c_str());
    }
  }
}

}  // namespace kk
