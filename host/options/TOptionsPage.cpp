#include "host/options/TOptionsPage.h"

#include <utility>

#include "host/base/Exception.h"

namespace kk {

TOptionsPage::TOptionsPage(TIntf<ISettingsNode> iNode, TPanel& ioPages)
    : FNode(std::move(iNode)), FPlace(&ioPages, u"pnlPage"), FFailure(&FPlace, u"lblFailure") {
  FPlace.SetVisible(false);
  FPlace.SetStretches(true);
  FFailure.SetVisible(false);
  try {
    Load();
  } catch (const std::exception& e) {
    FFailure.SetCaption(Format(u"Diese Seite kann nicht gezeigt werden: %s", {MessageOf(e)}));
    FFailure.SetVisible(true);
  }
}

TOptionsPage::~TOptionsPage() {
  if (FFrame != nullptr) FFrame->PutInto(nullptr);
}

void TOptionsPage::Load() {
  FCaption = FNode->GetCaption();
  FNode->LoadSettings();
  FFrame = &FNode->GetFrame();
  FFrame->PutInto(&FPlace);
  FFrame->SetStretches(true);
}

}  // namespace kk
