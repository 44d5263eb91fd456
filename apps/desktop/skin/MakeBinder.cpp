#include <array>

#include "apps/desktop/skin/TButtonBinder.h"
#include "apps/desktop/skin/TCheckBoxBinder.h"
#include "apps/desktop/skin/TComboBoxBinder.h"
#include "apps/desktop/skin/TEditBinder.h"
#include "apps/desktop/skin/TExplorerBarBinder.h"
#include "apps/desktop/skin/TFormBinder.h"
#include "apps/desktop/skin/TGaugeBinder.h"
#include "apps/desktop/skin/TImageBinder.h"
#include "apps/desktop/skin/TLabelBinder.h"
#include "apps/desktop/skin/TMemoBinder.h"
#include "apps/desktop/skin/TMessageBinder.h"
#include "apps/desktop/skin/TPanelBinder.h"
#include "apps/desktop/skin/TRadioButtonBinder.h"
#include "apps/desktop/skin/TResultTableBinder.h"
#include "apps/desktop/skin/TSpinEditBinder.h"
#include "apps/desktop/skin/TStatusBarBinder.h"
#include "apps/desktop/skin/TTabStripBinder.h"
#include "apps/desktop/skin/TToolbarBinder.h"
#include "apps/desktop/skin/TTreeBinder.h"

namespace kk {

namespace {

using TMaker = std::unique_ptr<TBinder> (*)(TSkin& ioSkin, TControl& ioControl);

template <class Model, class Binder>
std::unique_ptr<TBinder> Make(TSkin& ioSkin, TControl& ioControl) {
  auto* const model = dynamic_cast<Model*>(&ioControl);
  return model != nullptr ? std::make_unique<Binder>(ioSkin, *model) : nullptr;
}

// The first that fits: who derives from another stands before it.
constexpr auto cMakers = std::to_array<TMaker>({
    &Make<TfrmMessageDlg, TMessageBinder>,
    &Make<TForm, TFormBinder>,
    &Make<TPanel, TPanelBinder>,
    &Make<TButton, TButtonBinder>,
    &Make<TCheckBox, TCheckBoxBinder>,
    &Make<TComboBox, TComboBoxBinder>,
    &Make<TEdit, TEditBinder>,
    &Make<TExplorerBar, TExplorerBarBinder>,
    &Make<TGauge, TGaugeBinder>,
    &Make<TImage, TImageBinder>,
    &Make<TLabel, TLabelBinder>,
    &Make<TMemo, TMemoBinder>,
    &Make<TRadioButton, TRadioButtonBinder>,
    &Make<TResultTable, TResultTableBinder>,
    &Make<TSpinEdit, TSpinEditBinder>,
    &Make<TStatusBar, TStatusBarBinder>,
    &Make<TTabStrip, TTabStripBinder>,
    &Make<TToolButton, TToolButtonBinder>,
    &Make<TToolbar, TToolbarBinder>,
    &Make<TVirtualStringTree, TTreeBinder>,
});

}  // namespace

std::unique_ptr<TBinder> MakeBinder(TSkin& ioSkin, TControl& ioControl) {
  for (const TMaker make : cMakers) {
    if (std::unique_ptr<TBinder> binder = make(ioSkin, ioControl)) return binder;
  }
  return nullptr;
}

}  // namespace kk
