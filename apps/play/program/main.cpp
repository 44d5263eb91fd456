#include <sys/prctl.h>

#include <csignal>
#include <iostream>

#include "apps/play/PlayFile.h"

int main(int iCount, char** iArguments) {
  // Who started it is who kills it when the sound server hangs; without them it has no end.
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  return kk::PlayFile({iArguments + 1, iArguments + iCount}, std::cout, std::cerr);
}
