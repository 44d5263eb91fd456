#include "apps/cli/TCliCommands.h"

#include <algorithm>
#include <array>

#include "apps/cli/TCliAdd.h"
#include "apps/cli/TCliDemo.h"
#include "apps/cli/TCliExchange.h"
#include "apps/cli/TCliHostLine.h"
#include "apps/cli/TCliPrint.h"
#include "apps/cli/TCliRefresh.h"
#include "apps/cli/TCliRemind.h"
#include "apps/cli/TCliReminders.h"
#include "apps/cli/TCliSettings.h"
#include "apps/cli/TCliShow.h"
#include "apps/cli/TCliStructure.h"
#include "apps/cli/TCliTest.h"
#include "apps/cli/TerminalText.h"
#include "host/program/TExampleShop.h"

namespace kk {
namespace {

bool RunDemo(TCliContext& ioContext) {
  TExampleShop shop;
  return TCliDemo(ioContext, shop).Run();
}

bool ShowList(TCliContext& ioContext, const TCliArguments& iCall) {
  const TStringView name = iCall.Command->Name;
  if (name == u"show") {
    TCliShow(ioContext).Item(iCall.Words[0], iCall.Json);
  } else if (name == u"reminders") {
    TCliReminders(ioContext).List(iCall.Json);
  } else {
    TCliShow(ioContext).List(iCall.Json);
  }
  return true;
}

}  // namespace

bool TCliCommands::NeedsList(const TCliArguments& iCall) {
  return iCall.Command == nullptr ||
         (!TCliSettings::Knows(*iCall.Command) && !TCliTest::Knows(*iCall.Command));
}

bool TCliCommands::ChangesList(const TCliArguments& iCall) {
  constexpr auto cLooking = std::to_array<TStringView>(
      {u"list", u"show", u"reminders", u"print", u"export", u"mobile export"});
  if (iCall.Command == nullptr) return true;
  return NeedsList(iCall) && std::ranges::find(cLooking, iCall.Command->Name) == cLooking.end();
}

bool TCliCommands::Run(TCliContext& ioContext, const TCliArguments& iCall) {
  if (iCall.Command == nullptr) return TCliHostLine(ioContext).Run(iCall);
  if (TCliSettings::Knows(*iCall.Command)) {
    const THostPlugins& plugins = ioContext.Plugins;
    TCliSettings(ioContext.Console, plugins.SettingsKeys(), plugins.SettingsPublishers())
        .Run(iCall);
    return true;
  }
  if (TCliTest::Knows(*iCall.Command)) return TCliTest(ioContext).Run(iCall);
  if (TCliExchange::Knows(*iCall.Command)) return TCliExchange(ioContext).Run(iCall);
  if (TCliStructure::Knows(*iCall.Command)) return TCliStructure(ioContext).Run(iCall);
  const TStringView name = iCall.Command->Name;
  if (name == u"add") return TCliAdd(ioContext).Run(iCall);
  if (name == u"refresh") return TCliRefresh(ioContext).Run(iCall);
  if (name == u"remind") return TCliRemind(ioContext).Run(iCall);
  if (name == u"print") return TCliPrint(ioContext).Run(iCall);
  if (name == u"demo") return RunDemo(ioContext);
  return ShowList(ioContext, iCall);
}

TCliExit Answered(ICliConsole& ioConsole, const std::function<TCliExit()>& iFunction) {
  try {
    return iFunction();
  } catch (const ECliUsage& e) {
    ioConsole.Complain(u"Fehler: " + e.Message());
    for (const TString& line : Split(e.Hint(), u'\n')) ioConsole.Complain(line);
    return TCliExit::ceUsage;
  } catch (const std::exception& e) {
    ioConsole.Complain(u"Fehler: " + ForTerminal(e));
    return TCliExit::ceFailed;
  }
}

}  // namespace kk
