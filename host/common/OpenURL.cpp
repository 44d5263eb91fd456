#include "host/common/OpenURL.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <thread>
#include <utility>

#include "host/base/Log.h"

namespace kk {

namespace {

constexpr size_t cMaxLength = 32 * 1024;

class TXdgOpener : public IUrlOpener {
 public:
  bool Open(const std::string& iUrl) override {
    std::string program = "xdg-open";
    std::string url = iUrl;
    char* arguments[] = {program.data(), url.data(), nullptr};
    pid_t child = 0;
    if (!Spawn(arguments, child)) return false;
    // It may live as long as the browser; somebody has to take its end, or it stays as a zombie.
    std::thread([child] { waitpid(child, nullptr, 0); }).detach();
    return true;
  }

 private:
  static bool Spawn(char* const* iArguments, pid_t& oChild) {
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    for (const int file : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
      posix_spawn_file_actions_addopen(&files, file, "/dev/null", O_RDWR, 0);
    }
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    const int error =
        posix_spawnp(&oChild, iArguments[0], &files, &attributes, iArguments, environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    return error == 0;
  }
};

IUrlOpener* installedOpener = nullptr;

IUrlOpener& Opener() {
  static TXdgOpener machine;
  return installedOpener != nullptr ? *installedOpener : machine;
}

bool IsAllowed(TStringView iUrl) {
  if (iUrl.size() > cMaxLength || WithoutControlCharacters(iUrl) != iUrl) return false;
  for (const TStringView begin : {u"http://", u"https://", u"mailto:"}) {
    if (iUrl.size() > begin.size() && SameText(iUrl.substr(0, begin.size()), begin)) return true;
  }
  return false;
}

// RFC 3986, 2.1 to 2.3.
std::string PercentEncoded(TStringView iUrl) {
  constexpr char cDigits[] = "0123456789ABCDEF";
  constexpr char cMarks[] = "-._~:/?#[]@!$&'()*+,;=%";
  std::string url;
  for (const char c : ToUtf8(iUrl)) {
    const bool alphanumeric =
        (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    if (alphanumeric || std::strchr(cMarks, c) != nullptr) {
      url += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    url += {'%', cDigits[byte >> 4], cDigits[byte & 0xF]};
  }
  return url;
}

}  // namespace

IUrlOpener* SetUrlOpener(IUrlOpener* iOpener) { return std::exchange(installedOpener, iOpener); }

void OpenURL(TStringView iUrl, bool /*iFlag*/) {
  if (!IsAllowed(iUrl)) {
    LogError(u"Host", u"Die Adresse wird nicht geöffnet: %s",
             {WithoutControlCharacters(iUrl.substr(0, 200))});
    return;
  }
  if (!Opener().Open(PercentEncoded(iUrl))) {
    LogError(u"Host", u"Es lässt sich kein Browser öffnen (xdg-open)");
  }
}

}  // namespace kk
