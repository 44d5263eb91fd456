#pragma once

#include <gio/gio.h>

namespace kk {

/// A kind of SecretService that refuses every prompt (SECRET_ERROR_IS_LOCKED) where libsecret's own
/// would open a dialog of the keyring and wait for its answer. Any thread.
GType UnaskingServiceType();

}  // namespace kk
