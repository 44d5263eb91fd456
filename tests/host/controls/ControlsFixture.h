#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/controls/TForm.h"

namespace kk {

/// Counts the events bound to it and can do something in each.
class TEventCounter {
 public:
  void Notify(TObject* Sender) {
    ++Count;
    LastSender = Sender;
    if (OnEvent) OnEvent();
  }
  void Key(TObject* Sender, char16_t& ioKey) {
    Notify(Sender);
    LastKey = ioKey;
    if (Swallows) ioKey = 0;
  }
  void CloseQuery(TObject* Sender, bool& ioCanClose) {
    Notify(Sender);
    ioCanClose = !Refuses;
  }
  TNotifyEvent Event() { return TNotifyEvent::Of<&TEventCounter::Notify>(this); }
  TKeyPressEvent KeyEvent() { return TKeyPressEvent::Of<&TEventCounter::Key>(this); }
  TCloseQueryEvent CloseQueryEvent() {
    return TCloseQueryEvent::Of<&TEventCounter::CloseQuery>(this);
  }

  int Count = 0;
  TObject* LastSender = nullptr;
  char16_t LastKey = 0;
  bool Swallows = false;
  bool Refuses = false;
  std::function<void()> OnEvent;
};

/// Records what a skin is told: "changed btnOK", "gone".
class TSkinRecorder : public IControlObserver {
 public:
  void ControlChanged(TControl& iControl) override {
    Notes.push_back("changed " + ToUtf8(iControl.Name()));
  }
  void ControlGone(TControl& /*iControl*/) override { Notes.push_back("gone"); }

  std::vector<std::string> Take() { return std::exchange(Notes, {}); }
  std::vector<std::string> Notes;
};

using TNotes = std::vector<std::string>;

/// A window on the screen.
struct TShownForm : TForm {
  TShownForm() : TForm(nullptr, u"TShownForm", u"Fenster") { Show(); }
};

}  // namespace kk
