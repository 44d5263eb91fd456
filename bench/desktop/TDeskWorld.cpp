#include "bench/desktop/TDeskWorld.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <chrono>

#include "host/contract/IApplication.h"
#include "host/controls/TfrmKKCommonMessageDlg.h"

namespace kk {
namespace {

constexpr std::chrono::minutes cLongest{2};

template <class T>
T* FindControl(TControl& ioRoot) {
  if (auto* const found = dynamic_cast<T*>(&ioRoot)) return found;
  for (TControl* child : ioRoot.Children()) {
    if (T* const found = FindControl<T>(*child)) return found;
  }
  return nullptr;
}

TMenuItem* FindEntry(const std::vector<TMenuItem*>& iEntries, TStringView iCaption) {
  for (TMenuItem* entry : iEntries) {
    if (entry->Caption() == iCaption) return entry;
  }
  return nullptr;
}

}  // namespace

TDeskWorld::TDeskWorld(const std::string& iFolder) : FFolder(iFolder) {}

TDeskWorld::~TDeskWorld() {
  if (FFormHost != nullptr) SetFormHost(FFormHost);
  if (FSession) FSession->End();
  FSession.reset();
}

void TDeskWorld::Open() {
  FServices = std::make_unique<THostServices>(THostServices::TOptions{FromUtf8(FFolder), false});
  FSession = std::make_unique<TDesktopSession>(TDesktopArguments::Parse({}), *FServices, FTray);
  FFormHost = SetFormHost(this);
  FSession->Open();
}

void TDeskWorld::Start() {
  Open();
  CrankUntil([this] { return IsFilled(); });
  CrankUntilIdle();
}

void TDeskWorld::CrankUntil(const std::function<bool()>& iCondition) {
  const auto end = std::chrono::steady_clock::now() + cLongest;
  while (!iCondition()) {
    if (std::chrono::steady_clock::now() > end) throw Exception(u"it does not come to that");
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
}

void TDeskWorld::CrankUntilIdle() {
  while (QCoreApplication::eventDispatcher()->processEvents(QEventLoop::AllEvents)) {
  }
}

TfrmKKCommonSectionBase* TDeskWorld::Section() {
  return Window().FindSection(GUIDToString(cMainMenuFormIDWatchlist));
}

bool TDeskWorld::IsFilled() {
  TfrmKKCommonSectionBase* const section = FSession->IsRunning() ? Section() : nullptr;
  if (section == nullptr || Window().Section() != section) return false;
  auto* const tree = FindControl<TVirtualStringTree>(*section);
  auto* const items = FindControl<TResultTable>(*section);
  return tree != nullptr && tree->SelectedNode() != nullptr && items != nullptr &&
         items->GetCount() > 0;
}

TVirtualStringTree& TDeskWorld::Tree() { return *FindControl<TVirtualStringTree>(*Section()); }

TResultTable& TDeskWorld::Items() { return *FindControl<TResultTable>(*Section()); }

QTreeView& TDeskWorld::View(bool iIsTree) {
  for (QTreeView* view : Window().findChildren<QTreeView*>()) {
    if (view->isVisible() && view->isHeaderHidden() == iIsTree) return *view;
  }
  throw Exception(u"no view");
}

TVirtualNode& TDeskWorld::Node(TStringView iName) {
  for (TVirtualNode* node = Tree().First(); node != nullptr; node = node->NextSibling()) {
    const TString text = Tree().Text(*node);
    if (text == iName || StartsWith(text, TString(iName) + u" (")) return *node;
  }
  throw Exception(Format(u"no node %s", {iName}));
}

void TDeskWorld::GoTo(TStringView iName) { Tree().FocusNode(Node(iName)); }

void TDeskWorld::SelectAllRows() {
  std::vector<int> rows(static_cast<size_t>(Items().GetCount()));
  for (size_t i = 0; i < rows.size(); ++i) rows[i] = static_cast<int>(i);
  Items().SelectRows(rows, 0);
}

void TDeskWorld::OpenItemsMenu() {
  if (!Items().OpenPopupMenu(Items().FocusedRow(), 0)) throw Exception(u"no menu");
}

void TDeskWorld::ClickItems(TStringView iCaption, TStringView iSub) {
  TMenuItem* entry = FindEntry(Items().PopupEntries(), iCaption);
  for (int i = 0; entry != nullptr && !iSub.empty() && i < entry->GetCount(); ++i) {
    if (entry->GetItems(i).Caption() != iSub) continue;
    entry = &entry->GetItems(i);
    break;
  }
  if (entry == nullptr || !entry->Click()) throw Exception(Format(u"no entry %s", {iCaption}));
}

void TDeskWorld::ShowModal(TForm& ioForm) {
  if (auto* const question = dynamic_cast<TfrmKKCommonMessageDlg*>(&ioForm)) {
    question->btnYes.Click();
  } else {
    ioForm.CloseByUser();
  }
  ioForm.EndModalIfDone();
}

}  // namespace kk
