#include "apps/desktop/skin/TQtFormHost.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>

#include "apps/desktop/skin/AsUser.h"
#include "apps/desktop/skin/QtText.h"
#include "apps/desktop/skin/TDialog.h"
#include "apps/desktop/skin/TSkin.h"
#include "host/controls/TForm.h"
#include "host/controls/TOpenDialog.h"

namespace kk {

namespace {

// The window in front of which another one opens; null for none.
QWidget* FrontWindow() {
  QWidget* const modal = QApplication::activeModalWidget();
  return modal != nullptr ? modal : QApplication::activeWindow();
}

QWidget* OwnerWindow(const TForm& iForm) {
  const TSkin* const skin = iForm.Owner() != nullptr ? TSkin::Of(*iForm.Owner()) : nullptr;
  QWidget* const widget = skin != nullptr ? skin->Widget() : nullptr;
  return widget != nullptr ? widget->window() : FrontWindow();
}

// "Sounddatei (*.wav)|*.wav;*.WAV" is "Sounddatei (*.wav *.WAV)" for Qt.
QStringList ToQtFilters(TStringView iFilter) {
  QStringList filters;
  const std::vector<TString> parts = Split(iFilter, u'|');
  for (size_t i = 0; i + 1 < parts.size(); i += 2) {
    const TString name = Trim(TStringView(parts[i]).substr(0, parts[i].find(u'(')));
    filters << ToQt(Format(u"%s (%s)", {name, ReplaceAll(parts[i + 1], u";", u" ")}));
  }
  return filters;
}

// "wch" of "Beobachten-Dateien (*.wch)|*.wch|...": what a name without an extension gets.
QString SuffixOf(TStringView iFilter) {
  const std::vector<TString> parts = Split(iFilter, u'|');
  const bool isOne = parts.size() > 1 && StartsWith(parts[1], u"*.") &&
                     parts[1].find_first_of(u";*?", 2) == TString::npos;
  return isOne ? ToQt(parts[1].substr(2)) : QString();
}

}  // namespace

void TQtFormHost::ShowModal(TForm& ioForm) {
  TDialog dialog(ioForm, OwnerWindow(ioForm));
  dialog.Open();
  bool done = false;
  while (true) {
    AsUser([&] { done = ioForm.EndModalIfDone(); });
    if (done) return;
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
}

bool TQtFormHost::ShowOpenDialog(TOpenDialog& ioDialog) {
  QFileDialog dialog(FrontWindow(), ToQt(ioDialog.Title));
  dialog.setAcceptMode(ioDialog.ForSaving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(ioDialog.FileMustExist ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  if (QGuiApplication::platformName() == QLatin1String("offscreen")) {
    dialog.setOption(QFileDialog::DontUseNativeDialog);
  }
  const QStringList filters = ToQtFilters(ioDialog.Filter);
  if (!filters.isEmpty()) dialog.setNameFilters(filters);
  if (ioDialog.ForSaving) dialog.setDefaultSuffix(SuffixOf(ioDialog.Filter));
  if (!ioDialog.FileName.empty()) {
    const QFileInfo file(ToQt(ioDialog.FileName));
    dialog.setDirectory(file.absolutePath());
    dialog.selectFile(file.fileName());
  }
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return false;
  ioDialog.FileName = FromQt(QFileInfo(dialog.selectedFiles().front()).absoluteFilePath());
  return true;
}

}  // namespace kk
