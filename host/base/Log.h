#pragma once

#include <exception>
#include <initializer_list>

#include "host/base/TString.h"

namespace kk {

enum class TLogLevel { llInfo, llError, llDetails, llException, llDebug };

/// Where log lines go. The host installs one at start; before that they go nowhere. Implementations
/// take lines from any thread.
class ILogSink {
 public:
  virtual ~ILogSink() = default;
  virtual void Write(TLogLevel iLevel, TStringView iSender, TStringView iText) = 0;
};

/// Installs the sink, which is borrowed, and answers the one before. Null switches logging off.
ILogSink* SetLogSink(ILogSink* iSink);

/// Normal course of events. Any thread, as all of these.
void LogInfo(TStringView iSender, TStringView iText);
void LogInfo(TStringView iSender, TStringView iFormat, std::initializer_list<TFormatArg> iArgs);
/// Errors.
void LogError(TStringView iSender, TStringView iText);
void LogError(TStringView iSender, TStringView iFormat, std::initializer_list<TFormatArg> iArgs);
/// Further lines that belong to the last one.
void LogDetails(TStringView iFormat, std::initializer_list<TFormatArg> iArgs);
/// An exception with its message.
void LogException(TStringView iSender, const std::exception& iException);
/// What only a developer wants to know.
void LogDebug(TStringView iSender, TStringView iText);

}  // namespace kk
