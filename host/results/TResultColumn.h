#pragma once

#include <cstdint>
#include <memory>

#include "host/contract/IAdditionalColumn.h"
#include "host/results/IResultColumnContent.h"

namespace kk {

enum class TResultAlignment : uint8_t { raLeft, raCenter, raRight };

/// One column of a result table: of the view itself, or an additional one of an extension, which
/// paints its cells. Only the table changes it. Main thread.
struct TResultColumn {
  /// What a user can't make it narrower than.
  static constexpr int cMinWidth = 16;
  static constexpr int cMaxWidth = 4000;

  TGuid Id;
  TString Caption;
  /// At 96 dots per inch.
  int Width = 100;
  TResultAlignment Alignment = TResultAlignment::raLeft;
  bool Visible = true;
  /// Null for an additional column.
  std::shared_ptr<const IResultColumnContent> Content;
  /// Empty for a column of the view's own.
  TIntf<IAdditionalColumn> Additional;

  /// Its cells are painted by TResultTable::PaintCell and have no text.
  bool IsPainted() const { return static_cast<bool>(Additional); }
};

}  // namespace kk
