#include <sys/prctl.h>

#include <QGuiApplication>
#include <csignal>
#include <iostream>

#include "apps/desktop/print/PrintFile.h"

int main(int iCount, char** iArguments) {
  // Who started it is who ends it when it takes too long.
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  // It has no screen, and what the toolkit has to say is nobody's business.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  const std::vector<std::string> arguments{iArguments + 1, iArguments + iCount};
  int count = 1;
  QGuiApplication application(count, iArguments);
  return kk::PrintFile(arguments, std::cin, std::cerr);
}
