#include "host/program/THostSession.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>

#include "host/base/Exception.h"
#include "host/base/Log.h"
#include "host/base/TMainLoop.h"

namespace kk {
namespace {

namespace fs = std::filesystem;

constexpr char cPackagesVariable[] = "KAUFKOBOLDE_PLUGINS";
constexpr char cPackagesFolder[] = "../lib/kaufkobolde";
constexpr int cTurnMs = 50;
constexpr auto cLongestEnd = std::chrono::seconds(10);

}  // namespace

TString THostSession::PackagesFolder() {
  const char* const named = std::getenv(cPackagesVariable);
  if (named != nullptr && named[0] != '\0') return FromUtf8(named);
  const fs::path program = fs::read_symlink("/proc/self/exe").parent_path();
  return FromUtf8((program / cPackagesFolder).lexically_normal().string());
}

THostSession::THostSession(TDeliveries::TFallback iFallback) : FDeliveries(std::move(iFallback)) {
  FLoader.LoadFolder(PackagesFolder());
  FPlugins.Find();
}

THostSession::~THostSession() { End(); }

void THostSession::Start(const TIntf<IApplication>& iApplication) {
  if (!FPlugins.HasWatchlist()) {
    throw Exception(
        Format(u"Die Beobachtenliste (libwatchlist.so) ist nicht geladen. Gesucht wurde in %s.",
               {PackagesFolder()}));
  }
  FHasStarted = true;
  FPlugins.Initialize(iApplication);
}

void THostSession::End() {
  EndWork();
  Uninitialize();
  Unload();
}

void THostSession::EndWork() {
  if (FStep >= TStep::seWorkEnded) return;
  FStep = TStep::seWorkEnded;
  TMainLoop& loop = MainLoop();
  // Once the plug-ins, which turn the loop while they wait, were asked to end: a delivery that is
  // cut off before that would be followed by the next one, which would fail, and be gone.
  loop.Post([this] { FDeliveries.Stop(); });
  FPlugins.TerminateThreads();
  FDeliveries.Stop();
  const auto last = std::chrono::steady_clock::now() + cLongestEnd;
  while (FPlugins.ThreadCount() > 0 && std::chrono::steady_clock::now() < last) {
    loop.ProcessMessages();
    loop.WaitForMessage(cTurnMs);
  }
}

void THostSession::Uninitialize() {
  if (FStep >= TStep::seUninitialized) return;
  FStep = TStep::seUninitialized;
  FPlugins.Uninitialize();
  // What still waits here comes too late for everybody, but its code lies in the packages.
  MainLoop().ProcessMessages();
}

void THostSession::Unload() {
  if (FStep >= TStep::seUnloaded) return;
  FStep = TStep::seUnloaded;
  if (FHasStarted) return FLoader.Unload();
  // A watch list that was never started can't be ended either and keeps its package in memory.
  // That is no failure, so it is told to nobody.
  const TInstalled<ILogSink> silent(&SetLogSink, nullptr);
  FLoader.Unload();
}

}  // namespace kk
