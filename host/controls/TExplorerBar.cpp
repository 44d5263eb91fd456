#include "host/controls/TExplorerBar.h"

namespace kk {

std::vector<TKK5SkinExplorerGroup*> TExplorerBar::Groups() const {
  std::vector<TKK5SkinExplorerGroup*> groups;
  for (TControl* child : Children()) {
    if (auto* group = dynamic_cast<TKK5SkinExplorerGroup*>(child)) groups.push_back(group);
  }
  return groups;
}

}  // namespace kk
