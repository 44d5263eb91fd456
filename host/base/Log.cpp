#include "host/base/Log.h"

#include <atomic>

#include "host/base/Exception.h"

namespace kk {

namespace {

std::atomic<ILogSink*> sink{nullptr};

void Write(TLogLevel iLevel, TStringView iSender, TStringView iText) {
  if (ILogSink* current = sink.load()) current->Write(iLevel, iSender, iText);
}

}  // namespace

ILogSink* SetLogSink(ILogSink* iSink) { return sink.exchange(iSink); }

void LogInfo(TStringView iSender, TStringView iText) { Write(TLogLevel::llInfo, iSender, iText); }

void LogInfo(TStringView iSender, TStringView iFormat, std::initializer_list<TFormatArg> iArgs) {
  LogInfo(iSender, Format(iFormat, iArgs));
}

void LogError(TStringView iSender, TStringView iText) { Write(TLogLevel::llError, iSender, iText); }

void LogError(TStringView iSender, TStringView iFormat, std::initializer_list<TFormatArg> iArgs) {
  LogError(iSender, Format(iFormat, iArgs));
}

void LogDetails(TStringView iFormat, std::initializer_list<TFormatArg> iArgs) {
  Write(TLogLevel::llDetails, u"", Format(iFormat, iArgs));
}

void LogException(TStringView iSender, const std::exception& iException) {
  Write(TLogLevel::llException, iSender, MessageOf(iException));
}

void LogDebug(TStringView iSender, TStringView iText) { Write(TLogLevel::llDebug, iSender, iText); }

}  // namespace kk
