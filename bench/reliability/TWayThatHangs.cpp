#include "bench/reliability/TWayThatHangs.h"

#include <arpa/inet.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "host/base/Exception.h"

namespace kk {

namespace fs = std::filesystem;

TWayThatHangs::TWayThatHangs(TStringView iName, TReliabilityWorld& ioWorld) {
  const std::string folder = ioWorld.Folder().string();
  if (iName == u"email") {
    ioWorld.Set(u"SmtpUrl", Format(u"smtp://127.0.0.1:%d", {Listen()}));
    ioWorld.Set(u"EMail", u"ich@example.org");
    ioWorld.Set(u"EMailConfirmed", u"1");
  } else if (iName == u"sms") {
    ioWorld.Set(u"SmsUrl", Format(u"http://127.0.0.1:%d/", {Listen()}));
    ioWorld.Set(u"SmsToken", u"token");
    ioWorld.Set(u"SMS", u"+491700000000");
  } else if (iName == u"sound") {
    const std::string socket = folder + "/pulse";
    setenv("XDG_RUNTIME_DIR", folder.c_str(), 1);
    setenv("PULSE_RUNTIME_PATH", folder.c_str(), 1);
    setenv("HOME", folder.c_str(), 1);
    setenv("PULSE_SERVER", ("unix:" + socket).c_str(), 1);
    Start({"pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
           "--load=module-native-protocol-unix auth-anonymous=1 socket=" + socket,
           "--load=module-null-sink"},
          socket);
  } else {
    const std::string socket = folder + "/bus";
    setenv("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + socket).c_str(), 1);
    Start({"dbus-daemon", "--session", "--nofork", "--address=unix:path=" + socket}, socket);
  }
}

TWayThatHangs::~TWayThatHangs() {
  if (FServer >= 0) close(FServer);
  if (FProcess <= 0) return;
  kill(FProcess, SIGKILL);
  waitpid(FProcess, nullptr, 0);
}

int TWayThatHangs::Listen() {
  FServer = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  auto* const plain = reinterpret_cast<sockaddr*>(&address);
  if (bind(FServer, plain, length) != 0 || listen(FServer, 16) != 0 ||
      getsockname(FServer, plain, &length) != 0) {
    throw Exception(u"no server");
  }
  return ntohs(address.sin_port);
}

void TWayThatHangs::Start(const std::vector<std::string>& iArguments, const std::string& iReady) {
  FProcess = fork();
  if (FProcess == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    std::vector<char*> arguments;
    for (const std::string& argument : iArguments) {
      arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    execvp(arguments[0], arguments.data());
    _exit(127);
  }
  for (int tries = 0; !fs::exists(iReady); ++tries) {
    if (tries > 100) throw Exception(u"no server: " + FromUtf8(iArguments[0]));
    usleep(100'000);
  }
  usleep(300'000);
  kill(FProcess, SIGSTOP);
}

}  // namespace kk
