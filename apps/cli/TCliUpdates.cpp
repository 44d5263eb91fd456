#include "apps/cli/TCliUpdates.h"

#include <utility>

#include "host/base/TMainLoop.h"

namespace kk {
namespace {

// How long Ctrl+C may go unnoticed.
constexpr int cTurnMs = 50;

}  // namespace

TCliUpdates::TCliUpdates(TCliContext& ioContext) : FContext(ioContext) {
  FContext.Plugins.List().SetOnUpdateFinished(
      TNotifyEventSearchResult::Of<&TCliUpdates::DoUpdateFinished>(this));
}

TCliUpdates::~TCliUpdates() { FContext.Plugins.List().SetOnUpdateFinished({}); }

void TCliUpdates::DoUpdateFinished(TObject* /*Sender*/, const TIntf<ISearchResult>& iSearchResult,
                                   bool iSucceeded) {
  FEnds.push_back({iSearchResult, iSucceeded});
}

bool TCliUpdates::Wait(TStringView iProgress, const std::function<void(const TEnd&)>& iOnEnd) {
  const IWatchlistAccess& list = FContext.Plugins.List();
  bool going = true;
  while (going) {
    MainLoop().ProcessMessages();
    going = list.OpenUpdates() > 0;
    for (; !FEnds.empty(); FEnds.pop_front()) iOnEnd(FEnds.front());
    if (!going) break;
    FContext.Console.Progress(Format(u"%s (%d offen)", {iProgress, list.OpenUpdates()}));
    if (FContext.Console.TakeInterrupt()) {
      FContext.Plugins.LeaveWork();
      FContext.Console.Complain(u"Abgebrochen.");
      return false;
    }
    MainLoop().WaitForMessage(cTurnMs);
  }
  FContext.Console.Progress({});
  return true;
}

}  // namespace kk
