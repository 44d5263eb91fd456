#include "apps/desktop/shell/TDesktop.h"

#include <QTimer>
#include <algorithm>

#include "apps/desktop/shell/TIniFileSectionMainWindow.h"
#include "apps/desktop/skin/AsUser.h"
#include "host/base/Guard.h"
#include "host/common/TCmdParams.h"
#include "host/common/TFileHelper.h"
#include "host/common/TVersionHelper.h"
#include "host/controls/TfrmMessageDlg.h"
#include "host/options/TfrmOptions.h"

namespace kk {
namespace {

constexpr TStringView cImport = u"-remimport";

void Complain(TStringView iText) { MessageDlg(iText, TMsgDlgType::mtWarning, {TMsgDlgBtn::mbOK}); }

}  // namespace

TDesktop::TDesktop(TTrayIcon& ioTray)
    : FTray(ioTray), FOptionsButton(MakeIntf<TToolbarButtonOptions>([this] { ShowOptions(); })) {
  FSearchButton->SetOnClick(TNotifyEvent::Of<&TDesktop::DoSearchClick>(this));
  FSearch.SetOnTryExample(TNotifyEvent::Of<&TDesktop::DoTryExample>(this));
  FWindow.SetOnClose([this] { return DoClose(); });
  FWindow.SetOnQuit([this] { FOnQuit(); });
  FWindow.SetOnAbout([] { ShowAbout(); });
  FWindow.SetOnTryExample([this] { DoTryExample(nullptr); });
  FWindow.SetOnDrop([this](const TDroppedText& iText) { TakeDrop(iText); });
  FTray.SetOnToggle([this] { ToggleTray(); });
  FTray.SetOnQuit([this] { FOnQuit(); });
}

TDesktop::~TDesktop() {
  FTray.SetOnToggle({});
  FTray.SetOnQuit({});
  FTray.Hide();
  FSearchButton->SetOnClick({});
}

void TDesktop::Open() {
  FWindow.RestorePlace();
  FWindow.SetMessage(u"Die Beobachtenliste wird geladen...");
  FTray.Show();
  FInTray = TIniFileSectionGeneral().GetStartInTray() && FTray.IsAvailable();
  FTray.SetWindowIsShown(!FInTray);
  if (!FInTray) FWindow.show();
}

void TDesktop::Begin(THostPlugins& ioPlugins, const TIntf<IApplication>& iApplication) {
  FPlugins = &ioPlugins;
  FApplication = iApplication;
  FSearch.Initialize(iApplication);
  OpenSearches();
  FWindow.SetButtons(ToolbarButtons());
  ShowFirstSection();
}

void TDesktop::OpenSearches() {
  for (const THostPlugins::TSearch& search : FPlugins->Searches()) {
    try {
      FSearch.AddSource(search.Source, search.Extensions);
    } catch (const std::exception& e) {
      LogError(u"Host", u"Eine Quelle kann nicht suchen: %s", {MessageOf(e)});
    }
  }
}

void TDesktop::ShowFirstSection() {
  TfrmKKCommonSectionBase* const last = FWindow.FindSection(TIniFileSectionMainWindow().Section());
  last != nullptr ? last->Show() : FSearch.Show();
}

void TDesktop::Hide() {
  FWindow.SavePlace();
  FWindow.hide();
  FTray.Hide();
}

void TDesktop::Leave() {
  if (FPlugins == nullptr) return;
  FPlugins = nullptr;
  FApplication = nullptr;
  FSearch.Uninitialize();
}

void TDesktop::ShowSection(TfrmKKCommonSectionBase& ioForm) {
  ++FShown;
  FWindow.ShowSection(ioForm);
}

void TDesktop::SectionClosed() {
  if (FPlugins != nullptr) FSearch.Show();
}

std::vector<TIntf<IToolbarButton>> TDesktop::ToolbarButtons() const {
  std::vector<TIntf<IToolbarButton>> result;
  if (FPlugins != nullptr) result = FPlugins->ToolbarButtons();
  result.emplace_back(FSearchButton);
  result.push_back(FOptionsButton);
  std::ranges::stable_sort(result, {}, [](const auto& iButton) { return iButton->GetSortOrder(); });
  return result;
}

void TDesktop::Take(const TDroppedText& iText) {
  if (!HasBegun()) return;
  if (!iText.Text.empty()) {
    FSearch.Show();
    FSearch.SearchFor(iText.Text);
  }
  for (const TString& file : iText.Files) Import(file);
}

// Until the drop is over, the program that it comes from waits: a dialog must not stand in it.
void TDesktop::TakeDrop(const TDroppedText& iText) {
  TDroppedText words = iText;
  words.Files.clear();
  Take(words);
  if (iText.Files.empty()) return;
  QTimer::singleShot(0, &FWindow, [this, files = iText] {
    TDroppedText later = files;
    later.Text.clear();
    AsUser([&] { Take(later); });
  });
}

bool TDesktop::CanImport(const TString& iFileName) {
  const TString name = WithoutControlCharacters(iFileName);
  if (!TDroppedText::IsExportFile(iFileName)) {
    Complain(Format(u"Mit dieser Datei kann das Programm nichts anfangen: %s", {name}));
  } else if (!FileExists(iFileName)) {
    Complain(Format(u"Datei nicht vorhanden: %s", {name}));
  } else {
    return true;
  }
  return false;
}

void TDesktop::Import(const TString& iFileName) {
  if (CanImport(iFileName)) FPlugins->List().OfferImport(iFileName);
}

void TDesktop::ImportAtOnce(const TString& iFileName) {
  if (!CanImport(iFileName)) return;
  const int shown = FShown;
  FPlugins->ProcessCommandLine(Format(u"%s %s", {cImport, TCmdParams::Quote(iFileName)}));
  if (FShown != shown) return;  // the section shows what has come
  Complain(Format(u"Diese Datei ist nicht oder nicht ganz übernommen worden: %s",
                  {WithoutControlCharacters(iFileName)}));
}

void TDesktop::TakeHostLine(const std::vector<TString>& iLine) {
  if (iLine.empty() || !HasBegun()) return;
  // Of a single file the user hears what becomes of it.
  if (iLine.size() == 2 && SameText(iLine[0], cImport)) return ImportAtOnce(iLine[1]);
  FPlugins->ProcessCommandLine(TCmdParams::Join(iLine));
}

void TDesktop::ComeBack(TStringView iActivation) {
  FWindow.ComeToFront(iActivation);
  FTray.SetWindowIsShown(true);
  if (!std::exchange(FInTray, false) || FPlugins == nullptr) return;
  FPlugins->RestoreFromTray();
}

bool TDesktop::GoToTray() {
  if (!FTray.IsAvailable() || !HasBegun() || !FPlugins->MayMinimizeToTray()) return false;
  FWindow.SavePlace();
  FWindow.hide();
  FTray.SetWindowIsShown(false);
  FInTray = true;
  FPlugins->MinimizeToTray();
  return true;
}

bool TDesktop::DoClose() {
  if (TIniFileSectionGeneral().GetCloseToTray() && GoToTray()) return false;
  FOnQuit();
  return false;  // the end takes the window away
}

void TDesktop::ToggleTray() {
  if (FWindow.isVisible() && !FWindow.isMinimized()) {
    GoToTray();
  } else {
    ComeBack();
  }
}

void TDesktop::ShowOptions() {
  if (!HasBegun()) return;
  TfrmOptions::Display(FWindow.Section(), FPlugins->SettingsPages(), FApplication);
}

void TDesktop::ShowAbout() {
  ShowMessage(TVersionHelper::ReplaceVersionParams(
      u"Kaufkobolde %MV%SV\n\nSucht Artikel und beobachtet ihre Preise."));
}

void TDesktop::DoSearchClick(TObject* /*Sender*/) { FSearch.Show(); }

void TDesktop::DoTryExample(TObject* /*Sender*/) {
  if (!HasBegun()) return;
  if (!FShop) FShop.emplace();
  TString addresses;
  for (const TString& article : FShop->Articles()) addresses += article + u'\n';
  FSearch.Show();
  FSearch.SearchFor(Trim(addresses));
}

}  // namespace kk
