#include "host/delivery/email/TMailOutbox.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <system_error>
#include <utility>

#include "host/base/Exception.h"
#include "host/base/Guard.h"
#include "host/base/Log.h"
#include "host/base/TClock.h"
#include "host/common/TFileHelper.h"
#include "host/common/TFileWriter.h"

namespace kk {

namespace fs = std::filesystem;

namespace {

using enum TSmtpOutcome;

constexpr TStringView cSender = u"E-Mail-Postausgang";
constexpr char cExtension[] = ".mail";
constexpr TStringView cDamagedExtension = u".damaged";
constexpr char cLockName[] = "/outbox.lock";
// Often enough to see how the clock is set.
constexpr int64_t cPollMs = 1000;
// By so much two clocks may seem to part when nobody sets one of them.
constexpr int64_t cMaxDriftMs = 1000;
// Above this the doubling has come to its end long ago.
constexpr int cMaxDoublings = 20;

int64_t NowMs() { return LocalToUtcMs(Now()); }

int64_t DelayAfter(int iAttempts) {
  const int doublings = std::clamp(iAttempts - 1, 0, cMaxDoublings);
  return std::min(TMailOutbox::cFirstDelayMs << doublings, TMailOutbox::cMaxDelayMs);
}

// The random part of the Message-ID: the same message never lies there twice.
std::string NameOf(const TMailMessage& iMessage) {
  return iMessage.MessageId.substr(1, iMessage.MessageId.find('@') - 1) + cExtension;
}

// False if the folder can't be read; one that is missing is empty.
template <class Function>
bool ForEachMail(const TString& iFolder, Function iFunction) {
  std::error_code error;
  fs::directory_iterator entry(ToUtf8(iFolder), error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    if (entry->path().extension() == cExtension) iFunction(*entry);
  }
  return !error || error == std::errc::no_such_file_or_directory;
}

}  // namespace

TMailOutbox::TMailOutbox(TStringView iFolder, TSend iSend)
    : FFolder(iFolder),
      FSend(iSend ? std::move(iSend)
                  : [](const TMailMessage& iMessage,
                       std::stop_token
                           iStop) { return TSmtpClient().Send(iMessage, std::move(iStop)); }),
      FLastMs(NowMs()),
      FLastSteadyMs(SteadyMs()) {}

TMailOutbox::~TMailOutbox() {
  Stop();
  if (FWorker.joinable()) FWorker.join();
  if (FLock >= 0) close(FLock);
}

void TMailOutbox::Start() {
  if (FLock >= 0) return;
  try {
    MakeHostFolder(FFolder);
    if (!Lock()) return;
  } catch (const Exception& e) {
    LogError(cSender, u"Der Postausgang kann nicht benutzt werden: %s",
             {ToSingleLine(e.Message())});
    return;
  }
  FStarted = true;
  FWorker = std::jthread([this] { Work(); });
}

bool TMailOutbox::Lock() {
  const std::string path = ToUtf8(FFolder) + cLockName;
  FLock = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
  if (FLock < 0) ThrowFileError(u"Die Datei %s lässt sich nicht öffnen: %s", path, errno);
  if (flock(FLock, LOCK_EX | LOCK_NB) == 0) return true;
  LogInfo(cSender, u"Um den Postausgang kümmert sich schon ein anderer Aufruf des Programms");
  return false;
}

// Without the lock, which is held while a message is written.
void TMailOutbox::Stop() { FStop.request_stop(); }

bool TMailOutbox::IsWorking() const { return FStarted && !FStop.stop_requested(); }

// The moment. What was set on the clock since the last look is added to all times that are kept, so
// that they stay as far from now as they were. Under the lock.
int64_t TMailOutbox::LookAtClock() {
  const int64_t now = NowMs();
  const int64_t steady = SteadyMs();
  const int64_t jump = now - std::exchange(FLastMs, now);
  const int64_t set = jump - (steady - std::exchange(FLastSteadyMs, steady));
  if (std::abs(set) <= cMaxDriftMs) return now;
  for (auto& [name, entry] : FEntries) {
    entry.FirstMs += set;
    entry.NextMs += set;
  }
  return now;
}

TString TMailOutbox::PathOf(const std::string& iName) const {
  return FFolder + u"/" + FromUtf8(iName);
}

void TMailOutbox::CheckRoom(size_t iBytes) const {
  size_t count = 1;
  size_t bytes = iBytes;
  ForEachMail(FFolder, [&](const fs::directory_entry& iEntry) {
    std::error_code error;
    const auto size = iEntry.file_size(error);
    ++count;
    if (!error) bytes += size;
  });
  if (count > cMaxMessages || bytes > cMaxBytes) throw Exception(u"Der Postausgang ist voll");
}

void TMailOutbox::Add(const TMailMessage& iMessage, TStringView iReason) {
  TMailFile file{iMessage, 0, 0, 1, ToSingleLine(iReason)};
  const std::string name = NameOf(iMessage);
  {
    const std::lock_guard lock(FMutex);
    file.FirstMs = LookAtClock();
    file.NextMs = file.FirstMs + cFirstDelayMs;
    const std::string bytes = file.Write();
    MakeHostFolder(FFolder);
    CheckRoom(bytes.size());
    try {
      WriteFileAtomically(PathOf(name), bytes, 0600);
    } catch (const Exception&) {
      // Who is told that it isn't kept shall not find it sent.
      Guarded(cSender, [&] { DeleteFile(PathOf(name)); });
      throw;
    }
    FEntries[name] = {file.FirstMs, file.NextMs, cFirstDelayMs};
    FChanged = true;
  }
  FWake.notify_all();
  LogInfo(cSender, u"E-Mail an %s zurückgestellt (Message-ID %s): %s",
          {FromUtf8(iMessage.Recipient), FromUtf8(iMessage.MessageId), file.Reason});
}

void TMailOutbox::Work() {
  const std::stop_token stop = FStop.get_token();
  while (!stop.stop_requested()) {
    std::optional<int64_t> next;
    Guarded(cSender, [&] { next = RunDue(); });
    std::unique_lock lock(FMutex);
    const auto changed = [this] { return std::exchange(FChanged, false); };
    if (FEntries.empty() && FLoaded) {
      FWake.wait(lock, stop, changed);
    } else {
      const std::chrono::milliseconds wait(std::clamp<int64_t>(next.value_or(cPollMs), 0, cPollMs));
      FWake.wait_for(lock, stop, wait, changed);
    }
  }
}

std::optional<int64_t> TMailOutbox::RunDue() {
  if (!FLoaded) FLoaded = Load();
  while (!FStop.stop_requested()) {
    const std::string name = NextDue();
    if (name.empty()) break;
    Try(name);
  }
  const std::lock_guard lock(FMutex);
  std::optional<int64_t> next;
  const int64_t now = LookAtClock();
  for (const auto& [name, entry] : FEntries) {
    next = std::min(next.value_or(entry.NextMs - now), entry.NextMs - now);
  }
  return next;
}

// What lay there before is read for its times alone; the messages stay on the disk. False if it
// can't be seen at the moment.
bool TMailOutbox::Load() {
  std::vector<std::string> names;
  const bool whole = ForEachMail(FFolder, [&](const fs::directory_entry& iEntry) {
    names.push_back(iEntry.path().filename().string());
  });
  for (const std::string& name : names) {
    TMailFile file;
    if (FStop.stop_requested() || IsKnown(name)) continue;
    const TReading reading = Read(name, file);
    const std::lock_guard lock(FMutex);
    const int64_t now = LookAtClock();
    if (reading == TReading::rdDone) {
      const int64_t first = std::min(file.FirstMs, now);  // the clock was set back
      FEntries.try_emplace(name, TEntry{first, file.NextMs, DelayAfter(file.Attempts)});
    } else if (reading == TReading::rdNotNow) {
      FEntries.try_emplace(name, TEntry{now, now + cFirstDelayMs, cFirstDelayMs});
    }
  }
  return whole;
}

bool TMailOutbox::IsKnown(const std::string& iName) const {
  const std::lock_guard lock(FMutex);
  return FEntries.contains(iName);
}

// Of those that are due the one that has been due for the longest; empty for none. A wait that is
// longer than it was meant to be shows that the clock was set back while the program did not run.
std::string TMailOutbox::NextDue() {
  const std::lock_guard lock(FMutex);
  const int64_t now = LookAtClock();
  std::string first;
  int64_t firstMs = 0;
  for (const auto& [name, entry] : FEntries) {
    const bool due = entry.NextMs <= now || entry.NextMs - now > entry.DelayMs;
    if (!due || (!first.empty() && entry.NextMs >= firstMs)) continue;
    first = name;
    firstMs = entry.NextMs;
  }
  return first;
}

// Nothing if the file is gone, or if it is damaged and now put aside, so that it is neither lost
// nor read again and again.
TMailOutbox::TReading TMailOutbox::Read(const std::string& iName, TMailFile& oFile) {
  const TString path = PathOf(iName);
  if (!FileExists(path)) return TReading::rdNothing;
  try {
    std::error_code error;
    if (fs::file_size(ToUtf8(path), error) > 2 * TMailMessage::cMaxText && !error) {
      throw Exception(u"Die Datei ist zu groß");
    }
    oFile = TMailFile::Read(ReadFileBytes(path));
    return TReading::rdDone;
  } catch (const EInOutError& e) {
    LogError(cSender, ToSingleLine(e.Message()));
    return TReading::rdNotNow;
  } catch (const Exception& e) {
    LogError(cSender,
             u"Die Datei %s im Postausgang lässt sich nicht lesen und wird beiseitegelegt: %s",
             {path, ToSingleLine(e.Message())});
  }
  Guarded(cSender, [&] { RenameFile(path, path + TString(cDamagedExtension)); });
  return TReading::rdNothing;
}

void TMailOutbox::Try(const std::string& iName) {
  TMailFile file;
  const TReading reading = Read(iName, file);
  if (reading == TReading::rdNothing) return Forget(iName);
  if (reading == TReading::rdNotNow) return Postpone(iName);
  if (IsOver(iName, file)) return GiveUp(iName, file);
  const TSmtpResult result = Send(file.Message);
  const TString recipient = FromUtf8(file.Message.Recipient);
  const TString id = FromUtf8(file.Message.MessageId);
  switch (result.Outcome) {
    case soSent:
      LogInfo(cSender, u"E-Mail an %s beim %d. Versuch verschickt (Message-ID %s)",
              {recipient, file.Attempts + 1, id});
      return Remove(iName);
    case soForGood:
      LogError(cSender, u"E-Mail an %s kann nicht verschickt werden (Message-ID %s): %s",
               {recipient, id, result.Reason});
      return Remove(iName);
    case soCancelled:
      if (FStop.stop_requested()) return;
      [[fallthrough]];
    case soForNow:
      return Retry(iName, std::move(file), result.Reason);
  }
}

// Whether its day is over. The file's own time may be one of a clock that was set since.
bool TMailOutbox::IsOver(const std::string& iName, TMailFile& ioFile) {
  const std::lock_guard lock(FMutex);
  const int64_t now = LookAtClock();
  int64_t& first = FEntries[iName].FirstMs;
  first = std::min(first, now);  // never ahead, whatever the clocks say
  ioFile.FirstMs = first;
  return now - first > cLifeMs;
}

TSmtpResult TMailOutbox::Send(const TMailMessage& iMessage) const {
  try {
    return FSend(iMessage, FStop.get_token());
  } catch (const std::exception& e) {
    return {soForNow, ToSingleLine(MessageOf(e))};
  }
}

void TMailOutbox::Retry(const std::string& iName, TMailFile iFile, TStringView iReason) {
  const int64_t delay = DelayAfter(++iFile.Attempts);
  iFile.Reason = iReason;
  {
    const std::lock_guard lock(FMutex);
    iFile.NextMs = LookAtClock() + delay;
    TEntry& entry = FEntries[iName];
    iFile.FirstMs = entry.FirstMs;
    entry.NextMs = iFile.NextMs;
    entry.DelayMs = delay;
  }
  if (iFile.NextMs - iFile.FirstMs > cLifeMs) return GiveUp(iName, iFile);
  LogDebug(cSender, Format(u"%d. Versuch für %s: %s",
                           {iFile.Attempts, FromUtf8(iFile.Message.MessageId), iReason}));
  // On a full disk the file keeps its old times, which is no harm: it is tried earlier once.
  Guarded(cSender, [&] { WriteFileAtomically(PathOf(iName), iFile.Write(), 0600); });
}

// For a file that can't be read at the moment.
void TMailOutbox::Postpone(const std::string& iName) {
  const std::lock_guard lock(FMutex);
  TEntry& entry = FEntries[iName];
  entry.DelayMs = cMaxDelayMs;
  entry.NextMs = LookAtClock() + entry.DelayMs;
}

void TMailOutbox::GiveUp(const std::string& iName, const TMailFile& iFile) {
  LogError(cSender,
           u"E-Mail an %s nach 24 Stunden und %d Versuchen aufgegeben (Message-ID %s). Letzter "
           u"Fehler: %s",
           {FromUtf8(iFile.Message.Recipient), iFile.Attempts, FromUtf8(iFile.Message.MessageId),
            iFile.Reason});
  Remove(iName);
}

// A file that can't be taken away is forgotten all the same: what was sent is not sent again. Only
// the next start of the program finds it again.
void TMailOutbox::Remove(const std::string& iName) {
  Forget(iName);
  try {
    DeleteFile(PathOf(iName));
  } catch (const Exception& e) {
    LogError(cSender, ToSingleLine(e.Message()));
  }
}

void TMailOutbox::Forget(const std::string& iName) {
  const std::lock_guard lock(FMutex);
  FEntries.erase(iName);
}

}  // namespace kk
