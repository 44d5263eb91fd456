#pragma once

#include "host/base/IInterface.h"

namespace kk {

class TfrmKKCommonSectionBase;

/// What a host with a screen offers beside IApplication: it embeds the forms of sections and shows
/// one of them at a time. Section forms find it by themselves; see TfrmKKCommonSectionBase. Main
/// thread.
class ISectionHost : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{5D9C6C1E-5A3B-4B8B-9D0E-0A9E5C7B6F31}");

  /// The section can be embedded from now on. It stays the caller's, which takes it out again
  /// before it dies.
  virtual void AddSection(TfrmKKCommonSectionBase& ioForm) = 0;
  /// No effect for a form that is not there.
  virtual void RemoveSection(TfrmKKCommonSectionBase& ioForm) = 0;
  /// The section has been asked to show: it becomes the one on the screen, and its window comes to
  /// the front.
  virtual void ShowSection(TfrmKKCommonSectionBase& ioForm) = 0;
};

}  // namespace kk
