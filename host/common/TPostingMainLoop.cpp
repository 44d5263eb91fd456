#include "host/common/TPostingMainLoop.h"

#include <exception>
#include <future>
#include <memory>
#include <utility>

#include "host/base/Exception.h"

namespace kk {

// One after the other and outside of the lock: what a function holds may post with its end.
TPostingMainLoop::~TPostingMainLoop() {
  for (TFunction dropped; TakePosted(dropped); dropped = nullptr) {
  }
}

// It is woken under the lock: nobody can run the function, and end the loop, before that is over.
void TPostingMainLoop::Post(TFunction iFunction) {
  const std::lock_guard lock(FMutex);
  FPosted.push_back(std::move(iFunction));
  Wake();
}

void TPostingMainLoop::Synchronize(TFunction iFunction) {
  if (IsMainThread()) {
    iFunction();
    return;
  }
  auto promise = std::make_shared<std::promise<void>>();
  const auto failure = std::make_shared<std::exception_ptr>();
  std::future<void> done = promise->get_future();
  // The queue alone holds the promise from here on, so that dropping it ends the wait. It is kept
  // only behind the handler, when this thread has let go of the exception.
  Post([promise = std::move(promise), failure, &iFunction] {
    try {
      iFunction();
    } catch (...) {  // handed to the thread that waits
      *failure = std::current_exception();
    }
    promise->set_value();
  });
  try {
    done.get();
  } catch (const std::future_error&) {
    throw Exception(u"Die Hauptschleife ist beendet");
  }
  if (*failure) std::rethrow_exception(std::exchange(*failure, nullptr));
}

size_t TPostingMainLoop::PostedCount() const {
  const std::lock_guard lock(FMutex);
  return FPosted.size();
}

void TPostingMainLoop::RunPosted() {
  for (size_t count = PostedCount(); count > 0; --count) {
    TFunction function;  // dies, with all it holds, before the next one and outside of the lock
    if (!TakePosted(function)) return;
    Run(function);
  }
}

// A function that turns the loop itself may have taken what was counted; what is left must wake a
// loop inside of the function, too.
bool TPostingMainLoop::TakePosted(TFunction& oFunction) {
  const std::lock_guard lock(FMutex);
  if (FPosted.empty()) return false;
  oFunction = std::move(FPosted.front());
  FPosted.pop_front();
  if (!FPosted.empty()) Wake();
  return true;
}

void TPostingMainLoop::WaitForPosted(std::condition_variable& ioWoken,
                                     std::chrono::nanoseconds iAtMost) {
  std::unique_lock lock(FMutex);
  ioWoken.wait_for(lock, iAtMost, [this] { return !FPosted.empty(); });
}

}  // namespace kk
