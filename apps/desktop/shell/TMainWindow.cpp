#include "apps/desktop/shell/TMainWindow.h"

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QScreen>
#include <QShortcut>
#include <QTextEdit>
#include <QVBoxLayout>
#include <algorithm>

#include "apps/desktop/shell/TIniFileSectionMainWindow.h"
#include "apps/desktop/skin/AsUser.h"
#include "apps/desktop/skin/QtText.h"
#include "apps/desktop/skin/TDrawings.h"
#include "apps/desktop/skin/TWheelTurn.h"
#include "host/base/Guard.h"
#include "host/base/TMainLoop.h"

namespace kk {
namespace {

constexpr QSize cFirstSize{1100, 720};
// What the window manager's frame takes of a screen, as a rule.
constexpr QSize cFrame{16, 48};
constexpr int cMaxKey = 9;
constexpr int cPageMargin = 6;
constexpr TStringView cProgram = u"Kaufkobolde";
// What the toolkit puts before the program in the titles of dialogs.
constexpr TStringView cTitleDash = u" — ";
constexpr char cActivationVariable[] = "XDG_ACTIVATION_TOKEN";

// The screens may be smaller, or fewer, than they were the last time.
QRect OnScreen(QRect iPlace) {
  const QScreen* at = QGuiApplication::screenAt(iPlace.center());
  if (at == nullptr) at = QGuiApplication::primaryScreen();
  if (at == nullptr) return iPlace;
  const QRect screens = at->availableVirtualGeometry();
  if (screens.contains(iPlace)) return iPlace;
  const int side = cFrame.width() / 2;
  const QRect room = screens.adjusted(side, cFrame.height() - side, -side, -side);
  iPlace.setSize(iPlace.size().boundedTo(room.size()));
  iPlace.moveRight(std::min(iPlace.right(), room.right()));
  iPlace.moveBottom(std::min(iPlace.bottom(), room.bottom()));
  iPlace.moveTopLeft({std::max(iPlace.left(), room.left()), std::max(iPlace.top(), room.top())});
  return iPlace;
}

template <class Function, class... Args>
void Raise(const Function& iEvent, const Args&... iArgs) {
  if (iEvent) AsUser([&] { iEvent(iArgs...); });
}

// Fields take text that is dropped on them by themselves.
bool IsField(const QObject* iObject) {
  for (; iObject != nullptr; iObject = iObject->parent()) {
    if (qobject_cast<const QLineEdit*>(iObject) != nullptr ||
        qobject_cast<const QTextEdit*>(iObject) != nullptr ||
        qobject_cast<const QPlainTextEdit*>(iObject) != nullptr) {
      return true;
    }
  }
  return false;
}

// Where a section stands. It tells the section how large it is.
class TSectionPage : public QWidget {
 public:
  explicit TSectionPage(TfrmKKCommonSectionBase& ioForm) : FForm(ioForm) {}

 protected:
  void resizeEvent(QResizeEvent* iEvent) override {
    QWidget::resizeEvent(iEvent);
    AsUser([this] { FForm.Resize(width(), height()); });
  }

 private:
  TfrmKKCommonSectionBase& FForm;
};

}  // namespace

TMainWindow::TMainWindow() : FStack(new QStackedWidget), FMessage(new QLabel) {  // the window's
  ShowTitle();
  setWindowIcon(TDrawings::ProgramIcon());
  FMessage->setAlignment(Qt::AlignCenter);
  FMessage->setWordWrap(true);
  FStack->addWidget(FMessage);
  setCentralWidget(FStack);
  setAcceptDrops(true);
  resize(cFirstSize.boundedTo(screen()->availableGeometry().size() - cFrame));
  BuildMenu();
  auto* const paste = new QShortcut(QKeySequence(QKeySequence::Paste), this);
  connect(paste, &QShortcut::activated, this, [this] { Paste(); });
  qApp->installEventFilter(this);
}

TMainWindow::~TMainWindow() { FSections.clear(); }

void TMainWindow::SetMessage(TStringView iText) { FMessage->setText(ToQt(iText)); }

void TMainWindow::BuildMenu() {
  QMenu* const program = menuBar()->addMenu(ToQt(u"&Programm"));
  QAction* const quit = program->addAction(ToQt(u"&Beenden"));
  quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
  connect(quit, &QAction::triggered, this, [this] { Raise(FOnQuit); });
  FView = menuBar()->addMenu(ToQt(u"Ans&icht"));
  QMenu* const help = menuBar()->addMenu(ToQt(u"&Hilfe"));
  QAction* const example = help->addAction(ToQt(u"Beispielladen &ausprobieren"));
  connect(example, &QAction::triggered, this, [this] { Raise(FOnTryExample); });
  help->addSeparator();
  QAction* const about = help->addAction(ToQt(u"Ü&ber Kaufkobolde"));
  about->setShortcut(QKeySequence(Qt::Key_F1));
  connect(about, &QAction::triggered, this, [this] { Raise(FOnAbout); });
}

void TMainWindow::SetButtons(const std::vector<TIntf<IToolbarButton>>& iButtons) {
  FView->clear();
  for (const TIntf<IToolbarButton>& button : iButtons) {
    QAction* const action = FView->addAction(ToQtVerbatim(button->GetCaption()));
    const int key = static_cast<int>(FView->actions().size());
    if (key <= cMaxKey) {
      action->setShortcut(QKeySequence(QKeyCombination(Qt::CTRL, Qt::Key(Qt::Key_0 + key))));
    }
    connect(action, &QAction::triggered, this, [button] { AsUser([&] { button->Click(); }); });
  }
}

void TMainWindow::AddSection(TfrmKKCommonSectionBase& ioForm) {
  if (Find(ioForm) != nullptr) return;
  FSections.push_back(std::make_unique<TSection>());
  FSections.back()->Form = &ioForm;
}

void TMainWindow::RemoveSection(TfrmKKCommonSectionBase& ioForm) {
  if (FSection == &ioForm) {
    FSection = nullptr;
    ShowTitle();
    FStack->setCurrentWidget(FMessage);
  }
  std::erase_if(FSections, [&](const auto& iSection) { return iSection->Form == &ioForm; });
}

void TMainWindow::ShowSection(TfrmKKCommonSectionBase& ioForm) {
  TSection* const section = Find(ioForm);
  if (section == nullptr) return;
  if (!section->Page) Open(*section);
  TfrmKKCommonSectionBase* const before = std::exchange(FSection, &ioForm);
  FStack->setCurrentWidget(section->Page.get());
  if (before != nullptr && before != &ioForm) before->SetVisible(false);
  ShowTitle();
}

void TMainWindow::Open(TSection& ioSection) {
  ioSection.Page = std::make_unique<TSectionPage>(*ioSection.Form);
  auto* const layout = new QVBoxLayout(ioSection.Page.get());  // the page's
  layout->setContentsMargins(cPageMargin, 0, cPageMargin, 0);
  ioSection.Skin = std::make_unique<TSkin>(*ioSection.Form, ioSection.Page.get());
  layout->addWidget(ioSection.Skin->Widget());
  FStack->addWidget(ioSection.Page.get());
}

TfrmKKCommonSectionBase* TMainWindow::FindSection(TStringView iFormId) const {
  for (const auto& section : FSections) {
    if (GUIDToString(section->Form->GetFormID()) == iFormId) return section->Form;
  }
  return nullptr;
}

TMainWindow::TSection* TMainWindow::Find(const TfrmKKCommonSectionBase& iForm) {
  const auto found = std::ranges::find_if(
      FSections, [&](const auto& iSection) { return iSection->Form == &iForm; });
  return found == FSections.end() ? nullptr : found->get();
}

void TMainWindow::ComeToFront(TStringView iActivation) {
  // The toolkit takes the token from where a first start would have found it.
  if (!iActivation.empty()) qputenv(cActivationVariable, ToUtf8(iActivation).c_str());
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
  qunsetenv(cActivationVariable);
}

void TMainWindow::RestorePlace() {
  const std::string geometry = ToUtf8(TIniFileSectionMainWindow().Geometry());
  // The first time the desktop finds a place.
  if (!restoreGeometry(QByteArray::fromBase64(QByteArray::fromStdString(geometry)))) return;
  if (!isMaximized() && !isFullScreen()) setGeometry(OnScreen(this->geometry()));
}

void TMainWindow::SavePlace() {
  Guarded(u"TMainWindow.SavePlace", [&] {
    TIniFileSectionMainWindow section;
    section.SetGeometry(FromUtf8(saveGeometry().toBase64().toStdString()));
    if (FSection != nullptr) section.SetSection(GUIDToString(FSection->GetFormID()));
  });
}

void TMainWindow::paintEvent(QPaintEvent* iEvent) {
  QMainWindow::paintEvent(iEvent);
  // What stands below the window is painted in the same turn.
  if (const auto event = std::exchange(FOnPainted, {})) MainLoop().Post(event);
}

void TMainWindow::closeEvent(QCloseEvent* iEvent) {
  bool closes = true;
  if (FOnClose) AsUser([&] { closes = FOnClose(); });
  iEvent->setAccepted(closes);
}

void TMainWindow::Paste() {
  const QMimeData* const content = QGuiApplication::clipboard()->mimeData();
  if (content == nullptr) return;
  const TDroppedText text = TDroppedText::OfMime(*content);
  if (!text.IsEmpty()) Raise(FOnDrop, text);
}

bool TMainWindow::eventFilter(QObject* iObject, QEvent* iEvent) {
  const auto* const widget = qobject_cast<const QWidget*>(iObject);
  if (widget != nullptr && widget->window() == this && Takes(*widget, *iEvent)) return true;
  return QMainWindow::eventFilter(iObject, iEvent);
}

// Here and not in the window's own handlers: a field would else take a file for text.
bool TMainWindow::Takes(const QWidget& iWidget, QEvent& ioEvent) {
  switch (ioEvent.type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
      return QApplication::activeModalWidget() == nullptr && TakeDrop(ioEvent, IsField(&iWidget));
    case QEvent::Wheel:
      return TakeWheel(iWidget, static_cast<QWheelEvent&>(ioEvent));
    default:
      return false;
  }
}

// What the section sends on comes by here again.
bool TMainWindow::TakeWheel(const QWidget& iWidget, QWheelEvent& ioEvent) {
  const TSection* const section = FSection != nullptr ? Find(*FSection) : nullptr;
  if (FWheelTurns || section == nullptr || !section->Page->isAncestorOf(&iWidget)) return false;
  TWheelTurn turn(*section->Skin, ioEvent);
  FWheelTurns = true;
  AsUser([&] { FSection->MouseWheelHandler(turn); });
  FWheelTurns = false;
  ioEvent.setAccepted(turn.IsTaken());
  return true;
}

void TMainWindow::ShowTitle() {
  QString title = ToQt(cProgram);
  if (FSection != nullptr) title = ToQt(FSection->Caption()) + ToQt(cTitleDash) + title;
  setWindowTitle(title);
}

bool TMainWindow::TakeDrop(QEvent& ioEvent, bool iIsField) {
  auto& drop = static_cast<QDropEvent&>(ioEvent);
  // What comes from this program is dragged within it.
  if (drop.source() != nullptr || drop.mimeData() == nullptr) return false;
  const TDroppedText text = TDroppedText::OfMime(*drop.mimeData());
  if (text.IsEmpty() || (iIsField && text.Files.empty())) return false;
  drop.setDropAction(Qt::CopyAction);  // a browser or a file manager keeps what is its own
  drop.accept();
  if (ioEvent.type() == QEvent::Drop) Raise(FOnDrop, text);
  return true;
}

}  // namespace kk
