#include "bench/reliability/TReliabilityWorld.h"

#include <unistd.h>

#include <algorithm>

#include "host/base/Log.h"
#include "host/common/TFileHelper.h"
#include "host/controls/TfrmMessageDlg.h"
#include "reminders/TRemindDetailsWindow.h"

namespace kk {
namespace {

constexpr int cTurnMs = 20;

std::filesystem::path NewFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "reliability-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw Exception(u"no folder");
  return name;
}

class TNoApplication : public TInterfaced<IApplication> {
 public:
  void SectionClosed() override {}
  bool ShowNotificationWindow(TForm*) override { return false; }
};

TDateTime MachineNow() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return UtcMsToLocal(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

}  // namespace

TReliabilityWorld::TReliabilityWorld()
    : FFolder(NewFolder()), FIniFile(FromUtf8((FFolder / "settings.ini").string())) {
  SetHostFolders(DefaultHostFolders(FromUtf8(FFolder.string())));
  SetLogSink(this);
  SetIniFile(&FIniFile);
  SetMainLoop(&FLoop);
  SetFormHost(this);
  SetNotifier(this);
  SetClock(this);
  SetRemindThreadFactory(&FThreads);
}

TReliabilityWorld::~TReliabilityWorld() {
  FHandler.EndThread();
  SetRemindThreadFactory(nullptr);
  SetClock(nullptr);
  SetNotifier(nullptr);
  SetFormHost(nullptr);
  SetMainLoop(nullptr);
  SetIniFile(nullptr);
  SetLogSink(nullptr);
  std::filesystem::remove_all(FFolder);
}

TDateTime TReliabilityWorld::Now() const { return MachineNow().PlusMs(FJump.load()); }

void TReliabilityWorld::Set(TStringView iKey, TStringView iValue) {
  FIniFile.WriteString(u"Communication", iKey, iValue);
}

void TReliabilityWorld::Start() { FHandler.StartThread(MakeIntf<TNoApplication>()); }

TGuid TReliabilityWorld::Add(TDateTime iTime, std::unique_ptr<TRemindDetailsBase> iDetails) {
  if (!iDetails) iDetails = std::make_unique<TRemindDetailsWindow>(u"Titel", u"Text", u"Link");
  auto reminder = std::make_unique<TRemindItem>(NewGuid());
  const TGuid id = reminder->Id();
  reminder->SetRemindTime(iTime);
  reminder->LstDetails().Add(std::move(iDetails));
  FDue.emplace_back(id, iTime);
  FHandler.LstRemind().Add(std::move(reminder));
  return id;
}

void TReliabilityWorld::Display(const TNotification& iNotification) {
  const auto due = std::ranges::find(FDue, iNotification.Id, &std::pair<TGuid, TDateTime>::first);
  const int64_t late = due == FDue.end() ? -1 : Now().Ms() - due->second.Ms();
  FDeliveries.push_back({iNotification.Id, late, TSteady::now()});
}

// A modal window turns the loop from inside of a turn: what counts is the time since the loop last
// answered, wherever that was.
void TReliabilityWorld::Turn() {
  FLoop.WaitForMessage(cTurnMs);
  FAlive = TSteady::now();
  FLoop.ProcessMessages();
  const auto spent =
      std::chrono::duration_cast<std::chrono::milliseconds>(TSteady::now() - FAlive).count();
  FLongestTurnMs = std::max<int64_t>(FLongestTurnMs, spent);
}

bool TReliabilityWorld::RunUntil(const std::function<bool()>& iCondition, int iSeconds) {
  const auto last = TSteady::now() + std::chrono::seconds(iSeconds);
  while (!iCondition()) {
    if (TSteady::now() > last) return false;
    Turn();
  }
  return true;
}

// Nobody reads what a box says: it is closed at once. A window that waits ends by itself.
void TReliabilityWorld::ShowModal(TForm& ioForm) {
  if (dynamic_cast<TfrmMessageDlg*>(&ioForm) != nullptr) ioForm.SetModalResult(cModalOK);
  while (!ioForm.EndModalIfDone()) Turn();
}

int64_t TReliabilityWorld::TakeLongestTurnMs() { return std::exchange(FLongestTurnMs, 0); }

void TReliabilityWorld::Write(TLogLevel iLevel, TStringView iSender, TStringView iText) {
  if (iLevel == TLogLevel::llDebug) return;
  const std::lock_guard lock(FLogMutex);
  FLog.push_back(TString(iSender).append(u": ").append(iText));
}

int TReliabilityWorld::Logged(TStringView iText) const {
  const std::lock_guard lock(FLogMutex);
  const auto has = [iText](const TString& iLine) { return iLine.find(iText) != TString::npos; };
  return static_cast<int>(std::ranges::count_if(FLog, has));
}

void TReliabilityWorld::ForgetLog() {
  const std::lock_guard lock(FLogMutex);
  FLog.clear();
}

}  // namespace kk
