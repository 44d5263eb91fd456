#pragma once

#include <vector>

#include "host/contract/IToolbarExtender.h"
#include "host/controls/TForm.h"

namespace kk {

class TfrmKKCommonSectionBase;

/// The program on the screen, as TDesktopApplication hands it on to plug-ins. Main thread.
class IDesktop {
 public:
  virtual ~IDesktop() = default;
  virtual void AddSection(TfrmKKCommonSectionBase& ioForm) = 0;
  virtual void RemoveSection(TfrmKKCommonSectionBase& ioForm) = 0;
  virtual void ShowSection(TfrmKKCommonSectionBase& ioForm) = 0;
  /// The section on the screen was closed: another one has to take its place.
  virtual void SectionClosed() = 0;
  /// Takes the pop-up over and shows it. If it raises, the form is still the caller's.
  virtual void ShowPopUp(TForm& ioForm) = 0;
  /// Of the host and of all plug-ins, in ascending order.
  virtual std::vector<TIntf<IToolbarButton>> ToolbarButtons() const = 0;
};

}  // namespace kk
