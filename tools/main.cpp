#include <cstdio>
#include <exception>
#include <new>

#include "application.h"
#include "temporary_file.h"
#include "terminal.h"

int main(int argc, char** argv) {
  try {
    LmTool::CatchEndingSignals();
    return LmTool::RunTool(argc, argv);
  } catch (const std::bad_alloc&) {
    std::fputs("lmimaging: there is not enough memory\n", stderr);
    return 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "lmimaging: %s\n", LmTool::Printable(error.what()).c_str());
    return 1;
  }
}
