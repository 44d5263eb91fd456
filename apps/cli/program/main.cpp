#include "apps/cli/TCliProgram.h"

int main(int iCount, char** iArguments) {
  return kk::TCliProgram::Main({iArguments + 1, iArguments + iCount});
}
