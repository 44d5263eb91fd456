#pragma once

#include <QTreeView>

namespace kk {

/// Rows of one height, in a tree or in a table, which nobody edits in place. Where the user is they
/// show as told: other than Qt's own views they go nowhere by themselves when the focus comes.
class TRowView : public QTreeView {
 public:
  TRowView();

 protected:
  void focusInEvent(QFocusEvent* iEvent) override;
};

}  // namespace kk
