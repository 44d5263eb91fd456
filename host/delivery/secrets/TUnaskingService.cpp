#include "host/delivery/secrets/TUnaskingService.h"

#include <libsecret/secret.h>

namespace kk {
namespace {

constexpr char cRefusal[] = "The keyring asks for a prompt";

GVariant* PromptSync(SecretService*, SecretPrompt*, GCancellable*, const GVariantType*,
                     GError** oError) {
  g_set_error_literal(oError, SECRET_ERROR, SECRET_ERROR_IS_LOCKED, cRefusal);
  return nullptr;
}

void PromptAsync(SecretService* ioSelf, SecretPrompt*, const GVariantType*, GCancellable* iCancel,
                 GAsyncReadyCallback iCallback, gpointer iData) {
  GTask* const task = g_task_new(ioSelf, iCancel, iCallback, iData);
  g_task_return_new_error(task, SECRET_ERROR, SECRET_ERROR_IS_LOCKED, cRefusal);
  g_object_unref(task);
}

GVariant* PromptFinish(SecretService*, GAsyncResult* iResult, GError** oError) {
  return static_cast<GVariant*>(
      g_task_propagate_pointer(reinterpret_cast<GTask*>(iResult), oError));
}

void InitClass(gpointer ioClass, gpointer) {
  auto* const kind = static_cast<SecretServiceClass*>(ioClass);
  kind->prompt_sync = &PromptSync;
  kind->prompt_async = &PromptAsync;
  kind->prompt_finish = &PromptFinish;
}

}  // namespace

GType UnaskingServiceType() {
  static const GType type = g_type_register_static_simple(
      SECRET_TYPE_SERVICE, "KkUnaskingService", sizeof(SecretServiceClass), &InitClass,
      sizeof(SecretService), nullptr, static_cast<GTypeFlags>(0));
  return type;
}

}  // namespace kk
