#pragma once

#include <memory>

#include "host/common/ISecretStore.h"

namespace kk {

/// Keeps secrets in the desktop's keyring where one answers, else in the settings file.
///
/// The keyring is whatever speaks the freedesktop Secret Service API 0.2 on the session bus; each
/// secret is an item of its default collection with the attributes application ("kaufkobolde"),
/// section and key. A keyring that is locked counts as one that does not answer: nobody is asked to
/// unlock it. Without a session bus there is none, at once; else each operation ends within
/// cLimitMs and some 300 ms. No secret is kept here. Any thread.
class TSecretService : public ISecretStore {
 public:
  static constexpr int cLimitMs = 2000;

  TSecretService();
  ~TSecretService() override;
  TSecretService(const TSecretService&) = delete;
  TSecretService& operator=(const TSecretService&) = delete;

  /// What stands in the file counts first: it came there while the keyring did not answer, so that
  /// the keyring can hold nothing but what was there before. A keyring that can't tell is an empty
  /// answer and an error in the log.
  TString Read(TStringView iSection, TStringView iKey) override;
  /// What the keyring has taken is removed from the file. What is taken away goes from both; where
  /// the keyring can't be asked to, that raises Exception, because it may still hold the secret.
  void Write(TStringView iSection, TStringView iKey, TStringView iValue) override;

  /// Operations under way give the keyring up, later ones do not ask it. Any thread.
  void Stop();

 private:
  struct TShared;
  struct TCall;
  enum class TAnswer { saDone, saNoService, saFailed };
  using TWork = void (*)(TCall& ioCall);
  /// Runs the work on a thread of its own and waits for it within the limit. oReason says in German
  /// why it failed.
  TAnswer Ask(const std::shared_ptr<TCall>& ioCall, TWork iWork, TString& oReason);

  static void LoadSecret(TCall& ioCall);
  static void StoreSecret(TCall& ioCall);
  static void DeleteSecret(TCall& ioCall);

  /// Outlives this object where a thread does, too.
  const std::shared_ptr<TShared> FShared;
};

}  // namespace kk
