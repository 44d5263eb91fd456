#include "apps/desktop/shell/TDesktopProgram.h"

int main(int iCount, char** iArguments) {
  return kk::TDesktopProgram::Main({iArguments + 1, iArguments + iCount});
}
