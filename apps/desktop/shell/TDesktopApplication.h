#pragma once

#include "apps/desktop/shell/IDesktop.h"
#include "host/contract/IApplication.h"
#include "host/contract/ISectionHost.h"

namespace kk {

/// The host as the plug-ins see it: it embeds sections, has a main toolbar, shows pop-ups, and
/// delivers reminders (it says nothing about them). Plug-ins may hold it longer than the program
/// is on the screen; from Leave on nothing comes of their calls. Main thread.
class TDesktopApplication : public TInterfaced<IApplication, ISectionHost, IToolbarExtender> {
 public:
  /// Borrowed until Leave.
  explicit TDesktopApplication(IDesktop& ioDesktop) : FDesktop(&ioDesktop) {}
  void Leave() { FDesktop = nullptr; }

  void SectionClosed() override;
  bool ShowNotificationWindow(TForm* iForm) override;

  void AddSection(TfrmKKCommonSectionBase& ioForm) override;
  void RemoveSection(TfrmKKCommonSectionBase& ioForm) override;
  void ShowSection(TfrmKKCommonSectionBase& ioForm) override;

  /// A button that a plug-in puts there itself, beside those that it offers by its own extender.
  void Add(const TIntf<IToolbarButton>& iButton) override { FAdded.push_back(iButton); }
  int GetCount() const override { return static_cast<int>(Buttons().size()); }
  TIntf<IToolbarButton> GetItems(int iIndex) const override;

 private:
  std::vector<TIntf<IToolbarButton>> Buttons() const;

  IDesktop* FDesktop;
  std::vector<TIntf<IToolbarButton>> FAdded;
};

}  // namespace kk
