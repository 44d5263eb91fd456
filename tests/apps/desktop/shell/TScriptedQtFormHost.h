#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <string>

#include "host/base/TMainLoop.h"
#include "host/controls/IFormHost.h"
#include "host/controls/TForm.h"
#include "host/controls/TOpenDialog.h"

namespace kk {

/// The user in front of the program's real dialogs: each one that comes up is one that the test
/// expects, and what the user does with it runs while it stands on the screen. An unexpected one
/// fails the test and is cancelled.
class TScriptedQtFormHost : public IFormHost {
 public:
  using TAct = std::function<void(TForm& ioForm)>;

  TScriptedQtFormHost() : FReal(SetFormHost(this)) {}
  ~TScriptedQtFormHost() override {
    SetFormHost(FReal);
    for (const TStep& step : FSteps) ADD_FAILURE() << "no dialog came: " << step.Name;
  }
  TScriptedQtFormHost(const TScriptedQtFormHost&) = delete;
  TScriptedQtFormHost& operator=(const TScriptedQtFormHost&) = delete;

  void Expect(const std::string& iName, TAct iAct) { FSteps.push_back({iName, std::move(iAct)}); }
  bool IsDone() const { return FSteps.empty(); }

  void ShowModal(TForm& ioForm) override {
    const std::string name = ToUtf8(ioForm.Name());
    TAct act = [](TForm& ioUnexpected) { ioUnexpected.CloseByUser(); };
    if (!FSteps.empty() && FSteps.front().Name == name) {
      act = std::move(FSteps.front().Act);
      FSteps.pop_front();
    } else {
      ADD_FAILURE() << "nobody expected the dialog " << name << ": " << ToUtf8(ioForm.Caption());
    }
    MainLoop().Post([act, &ioForm] { act(ioForm); });
    FReal->ShowModal(ioForm);
  }
  bool ShowOpenDialog(TOpenDialog& ioDialog) override {
    ADD_FAILURE() << "nobody expected to choose a file: " << ToUtf8(ioDialog.Title);
    return false;
  }

 private:
  struct TStep {
    std::string Name;
    TAct Act;
  };
  IFormHost* const FReal;
  std::deque<TStep> FSteps;
};

}  // namespace kk
