#include "apps/cli/TCliSettingsText.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include "apps/cli/AskToReplace.h"
#include "apps/cli/TerminalText.h"
#include "host/base/Exception.h"
#include "host/base/WithCleanup.h"
#include "host/common/TFileHelper.h"
#include "host/common/TKKIniFile.h"

namespace kk {
namespace {

TString ReadText(TStringView iFileName) {
  std::error_code error;
  const auto size = std::filesystem::file_size(ToUtf8(iFileName), error);
  if (!error && size > TCliSettingsText::cMaxSize) {
    throw Exception(
        Format(u"%s ist zu groß für eine Datei mit Einstellungen.", {ForTerminal(iFileName)}));
  }
  TString text = FromUtf8(ReadFileBytes(iFileName));
  if (StartsWith(text, u"\uFEFF")) text.erase(0, 1);
  return text;
}

// What stands between brackets in a line of its own.
std::optional<TString> HeaderOf(const TString& iLine) {
  const TString line = Trim(iLine);
  if (line.size() < 2 || line.front() != u'[' || line.back() != u']') return {};
  return Trim(TStringView(line).substr(1, line.size() - 2));
}

}  // namespace

void TCliSettingsText::Export(TStringView iFileName) {
  if (FPublishers.empty()) throw Exception(u"Kein Plug-in hat Einstellungen zum Mitnehmen.");
  AskToReplace(iFileName);
  TString text;
  for (const TIntf<ISettingsPublisher>& publisher : FPublishers) {
    if (!text.empty()) text += u'\n';
    for (const TString& line : publisher->GetSettings().Lines()) text += line + u'\n';
  }
  WriteFileAtomically(iFileName, ToUtf8(text));
  FConsole.Print(Format(u"Einstellungen geschrieben: %s", {ForTerminal(iFileName)}));
}

void TCliSettingsText::Import(TStringView iFileName) {
  const std::vector<TStringList> sections = SectionsOf(ReadText(iFileName));
  if (std::ranges::all_of(sections, [](const auto& iLines) { return iLines.GetCount() == 0; })) {
    throw Exception(
        Format(u"%s enthält keine Einstellungen, mit denen ein Plug-in etwas anfangen kann.",
               {ForTerminal(iFileName)}));
  }
  WithCleanup(
      u"TCliSettingsText",
      [&] {
        for (size_t i = 0; i < sections.size(); ++i) Take(*FPublishers[i].Get(), sections[i]);
      },
      [] { IniFile().NotifyChanged(); });
}

std::vector<TStringList> TCliSettingsText::SectionsOf(TStringView iText) {
  TStringList lines;
  lines.SetText(iText);
  std::vector<TStringList> result(FPublishers.size());
  std::set<TString> unknown;
  TStringList* section = nullptr;
  for (const TString& line : lines.Lines()) {
    if (const auto header = HeaderOf(line)) {
      const auto owner = std::ranges::find_if(FPublishers, [&](const auto& iPublisher) {
        return SameText(iPublisher->GetSettingsNode(), *header);
      });
      section = owner == FPublishers.end()
                    ? nullptr
                    : &result[static_cast<size_t>(owner - FPublishers.begin())];
      if (section == nullptr && unknown.insert(*header).second) {
        FConsole.Complain(
            Format(u"Hinweis: Den Abschnitt [%s] kennt kein Plug-in, er wird "
                   u"übergangen.",
                   {ForTerminal(*header)}));
      }
    }
    if (section != nullptr) section->Add(line);
  }
  return result;
}

void TCliSettingsText::Take(ISettingsPublisher& ioPublisher, const TStringList& iLines) {
  if (iLines.GetCount() == 0) return;
  const TString name = ForTerminal(ioPublisher.GetSettingsName());
  try {
    ioPublisher.SetSettings(iLines);
  } catch (const EConvertError& e) {
    throw Exception(
        Format(u"Die Einstellungen von \"%s\" sind nicht alle zu verstehen: %s. Was in der Datei "
               u"davor steht, ist übernommen, was danach kommt, nicht.",
               {name, ForTerminal(e)}));
  }
  FConsole.Print(Format(u"Einstellungen übernommen: %s", {name}));
}

}  // namespace kk
