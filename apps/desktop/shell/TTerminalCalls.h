#pragma once

#include <QPointer>
#include <QWidget>
#include <deque>
#include <memory>

#include "apps/cli/TCliCalls.h"

namespace kk {

/// Calls of kaufkobolde-cli on the list that the window has open: they are answered here as they
/// would be there, one after the other. A command that takes its time, because it waits for an
/// answer in the terminal or for the network, keeps the window busy with a dialog, by which the
/// user can give it up. Made before the plug-ins are started, and gone after they are uninitialised
/// and before their packages are. Main thread.
class TTerminalCalls {
 public:
  /// Both are borrowed.
  TTerminalCalls(THostPlugins& ioPlugins, QWidget& ioWindow);
  /// Tells those who still wait that the program ends.
  ~TTerminalCalls();
  TTerminalCalls(const TTerminalCalls&) = delete;
  TTerminalCalls& operator=(const TTerminalCalls&) = delete;

  /// A caller to be answered in his turn.
  void Add(std::shared_ptr<THostPeer> iPeer) { FCallers.push_back(std::move(iPeer)); }
  /// Answers all, if no dialog stands and none of them is being answered; else nothing is done.
  void AnswerAll();
  /// Whether somebody waits for an answer that has not begun.
  bool HasCallers() const { return !FCallers.empty(); }
  bool IsAnswering() const { return FCalls.IsAnswering(); }
  /// The command that is being executed ends soon, as if the user had given it up.
  void Interrupt() { FCalls.Interrupt(); }

 private:
  void Answer(THostPeer& ioPeer);

  TCliCalls FCalls;
  const QPointer<QWidget> FWindow;
  std::deque<std::shared_ptr<THostPeer>> FCallers;
};

}  // namespace kk
