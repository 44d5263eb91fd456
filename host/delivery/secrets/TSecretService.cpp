#include "host/delivery/secrets/TSecretService.h"

#include <libsecret/secret.h>
#include <string.h>
#include <sys/stat.h>

#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <thread>

#include "host/base/Exception.h"
#include "host/base/Log.h"
#include "host/delivery/secrets/TGPointer.h"
#include "host/delivery/secrets/TUnaskingService.h"

namespace kk {
namespace {

constexpr auto cLimit = std::chrono::milliseconds(TSecretService::cLimitMs);
constexpr auto cGrace = std::chrono::milliseconds(300);
constexpr TStringView cSilent = u"Der Schlüsselbund antwortet nicht";
constexpr TStringView cEnding = u"Das Programm wird beendet";
constexpr TStringView cLocked = u"Der Schlüsselbund ist gesperrt";

// Without an address the library would go and start a bus.
bool HasSessionBus() {
  const char* const address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
  if (address != nullptr && address[0] != '\0') return true;
  const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
  if (runtime == nullptr || runtime[0] == '\0') return false;
  struct stat info {};
  return stat((std::string(runtime) + "/bus").c_str(), &info) == 0 && S_ISSOCK(info.st_mode);
}

const SecretSchema& Schema() {
  static const SecretSchema schema = [] {
    SecretSchema result = {};
    result.name = "kaufkobolde.Secret";
    result.flags = SECRET_SCHEMA_NONE;
    result.attributes[0] = {"application", SECRET_SCHEMA_ATTRIBUTE_STRING};
    result.attributes[1] = {"section", SECRET_SCHEMA_ATTRIBUTE_STRING};
    result.attributes[2] = {"key", SECRET_SCHEMA_ATTRIBUTE_STRING};
    return result;
  }();
  return schema;
}

// Anything that the thread makes hangs on a context of its own and goes with it.
class TOwnContext {
 public:
  TOwnContext() { g_main_context_push_thread_default(FContext); }
  ~TOwnContext() {
    g_main_context_pop_thread_default(FContext);
    g_main_context_unref(FContext);
  }
  TOwnContext(const TOwnContext&) = delete;
  TOwnContext& operator=(const TOwnContext&) = delete;

 private:
  GMainContext* const FContext = g_main_context_new();
};

void Wipe(std::string& ioText) {
  explicit_bzero(ioText.data(), ioText.size());
  ioText.clear();
}

}  // namespace

struct TSecretService::TShared {
  std::mutex Mutex;
  std::condition_variable Changed;
  bool Stopped = false;
};

// One question to the keyring. Until Ended it belongs to the thread that asks, but for Cancel.
struct TSecretService::TCall {
  TCall(TStringView iSection, TStringView iKey) : Section(ToUtf8(iSection)), Key(ToUtf8(iKey)) {}
  ~TCall() { Wipe(Value); }

  TGPointer<GHashTable> Attributes() const {
    return TGPointer<GHashTable>(secret_attributes_build(&Schema(), "application", "kaufkobolde",
                                                         "section", Section.c_str(), "key",
                                                         Key.c_str(), nullptr));
  }
  void Connect();
  TGPointer<GList> Search(SecretSearchFlags iFlags);
  /// Takes over the failure.
  void Fail(GError* iError);
  void Fail(TStringView iReason) {
    Answer = TAnswer::saFailed;
    Reason = iReason;
  }

  const std::string Section;
  const std::string Key;
  std::string Value;  ///< what shall be written, or what was read; UTF-8
  TAnswer Answer = TAnswer::saDone;
  TString Reason;
  TGPointer<GCancellable> Cancel{g_cancellable_new()};
  TGPointer<SecretService> Service;
  bool Ended = false;  ///< under the lock
};

void TSecretService::TCall::Fail(GError* iError) {
  const TGPointer<GError> error(iError);
  Answer = TAnswer::saFailed;
  if (g_cancellable_is_cancelled(Cancel.get()) != FALSE) return;  // who has cancelled knows why
  if (g_error_matches(iError, SECRET_ERROR, SECRET_ERROR_IS_LOCKED) != FALSE) {
    Reason = cLocked;
  } else {
    g_dbus_error_strip_remote_error(iError);
    Reason = WithoutControlCharacters(FromUtf8(iError->message));
  }
}

void TSecretService::TCall::Connect() {
  GError* error = nullptr;
  // Ours before the library's: a bus that goes away must not end the program.
  const TGPointer<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, Cancel.get(), &error));
  if (bus) {
    g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    Service.reset(secret_service_open_sync(UnaskingServiceType(), nullptr,
                                           SECRET_SERVICE_OPEN_SESSION, Cancel.get(), &error));
  }
  if (Service) return;
  const bool nobody = !bus || g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) ||
                      g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER);
  Fail(error);
  if (nobody && g_cancellable_is_cancelled(Cancel.get()) == FALSE) Answer = TAnswer::saNoService;
}

TGPointer<GList> TSecretService::TCall::Search(SecretSearchFlags iFlags) {
  GError* error = nullptr;
  TGPointer<GList> items(secret_service_search_sync(
      Service.get(), &Schema(), Attributes().get(),
      static_cast<SecretSearchFlags>(iFlags | SECRET_SEARCH_ALL), Cancel.get(), &error));
  if (error != nullptr) Fail(error);
  return items;
}

TSecretService::TSecretService() : FShared(std::make_shared<TShared>()) {}

TSecretService::~TSecretService() { Stop(); }

void TSecretService::Stop() {
  const std::lock_guard lock(FShared->Mutex);
  FShared->Stopped = true;
  FShared->Changed.notify_all();
}

TSecretService::TAnswer TSecretService::Ask(const std::shared_ptr<TCall>& ioCall, TWork iWork,
                                            TString& oReason) {
  if (!HasSessionBus()) return TAnswer::saNoService;
  std::unique_lock lock(FShared->Mutex);
  oReason = cEnding;
  if (FShared->Stopped) return TAnswer::saFailed;
  std::thread worker([call = ioCall, shared = FShared, iWork] {
    {
      const TOwnContext context;
      call->Connect();
      if (call->Service) iWork(*call);
      call->Service.reset();
    }
    const std::lock_guard end(shared->Mutex);
    call->Ended = true;
    shared->Changed.notify_all();
  });
  FShared->Changed.wait_for(lock, cLimit, [&] { return ioCall->Ended || FShared->Stopped; });
  if (!FShared->Stopped) oReason = cSilent;
  lock.unlock();
  g_cancellable_cancel(ioCall->Cancel.get());
  lock.lock();
  const bool ended = FShared->Changed.wait_for(lock, cGrace, [&] { return ioCall->Ended; });
  lock.unlock();
  if (!ended) {
    worker.detach();  // it holds what it needs
    return TAnswer::saFailed;
  }
  worker.join();
  if (!ioCall->Reason.empty()) oReason = ioCall->Reason;
  return ioCall->Answer;
}

void TSecretService::LoadSecret(TCall& ioCall) {
  const TGPointer<GList> items = ioCall.Search(SECRET_SEARCH_LOAD_SECRETS);
  for (GList* item = items.get(); item != nullptr; item = item->next) {
    SecretValue* const value = secret_item_get_secret(static_cast<SecretItem*>(item->data));
    if (value == nullptr) continue;
    gsize size = 0;
    const char* const bytes = secret_value_get(value, &size);
    ioCall.Value.assign(bytes, size);
    secret_value_unref(value);
    return;
  }
  if (items) ioCall.Fail(cLocked);
}

void TSecretService::StoreSecret(TCall& ioCall) {
  SecretValue* const value =
      secret_value_new(ioCall.Value.data(), static_cast<gssize>(ioCall.Value.size()), "text/plain");
  const std::string label = "Kaufkobolde: " + ioCall.Key;
  GError* error = nullptr;
  const gboolean stored = secret_service_store_sync(
      ioCall.Service.get(), &Schema(), ioCall.Attributes().get(), SECRET_COLLECTION_DEFAULT,
      label.c_str(), value, ioCall.Cancel.get(), &error);
  secret_value_unref(value);
  if (stored == FALSE) ioCall.Fail(error);
}

void TSecretService::DeleteSecret(TCall& ioCall) {
  const TGPointer<GList> items = ioCall.Search(SECRET_SEARCH_NONE);
  for (GList* item = items.get(); item != nullptr; item = item->next) {
    auto* const found = static_cast<SecretItem*>(item->data);
    GError* error = nullptr;
    if (secret_item_get_locked(found) != FALSE) return ioCall.Fail(cLocked);
    if (secret_item_delete_sync(found, ioCall.Cancel.get(), &error) == FALSE) {
      return ioCall.Fail(error);
    }
  }
}

TString TSecretService::Read(TStringView iSection, TStringView iKey) {
  const TString inFile = FileSecretStore().Read(iSection, iKey);
  if (!inFile.empty()) return inFile;
  const auto call = std::make_shared<TCall>(iSection, iKey);
  TString reason;
  const TAnswer answer = Ask(call, &LoadSecret, reason);
  if (answer == TAnswer::saDone) return FromUtf8(call->Value);
  if (answer == TAnswer::saFailed) {
    LogError(u"Host", u"%s ist nicht lesbar: %s", {iKey, reason});
  }
  return {};
}

void TSecretService::Write(TStringView iSection, TStringView iKey, TStringView iValue) {
  const auto call = std::make_shared<TCall>(iSection, iKey);
  TString reason;
  if (iValue.empty()) {
    FileSecretStore().Write(iSection, iKey, {});
    if (Ask(call, &DeleteSecret, reason) != TAnswer::saFailed) return;
    throw Exception(Format(u"%s kann noch im Schlüsselbund liegen: %s", {iKey, reason}));
  }
  call->Value = ToUtf8(iValue);
  const TAnswer answer = Ask(call, &StoreSecret, reason);
  if (answer == TAnswer::saDone) return FileSecretStore().Write(iSection, iKey, {});
  if (answer == TAnswer::saFailed) {
    LogInfo(u"Host", u"%s kommt in die Einstellungsdatei: %s", {iKey, reason});
  }
  FileSecretStore().Write(iSection, iKey, iValue);
}

}  // namespace kk
