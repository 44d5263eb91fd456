#pragma once

namespace kk {

/// What the add panel asks of the section that it stands in. Main thread.
class IAddProgressOwner {
 public:
  virtual ~IAddProgressOwner() = default;
  /// Writes the watch list file.
  virtual void SaveAll() = 0;
  /// Builds the section's tree anew, with the flag keeping what is selected.
  virtual void BuildCategoriesTree(bool iKeepSelection) = 0;
};

}  // namespace kk
