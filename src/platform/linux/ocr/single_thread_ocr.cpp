#include "platform/linux/ocr/single_thread_ocr.h"

#include <unistd.h>

#include <cstdlib>

namespace vesko {

void ensureSingleThreadedOcr(char** argv) {
  if (std::getenv("OMP_THREAD_LIMIT") != nullptr) return;
  if (setenv("OMP_THREAD_LIMIT", "1", 1) != 0) return;
  // /proc/self/exe rather than argv[0]: the program may have been started through PATH or a
  // relative path from another folder.
  execv("/proc/self/exe", argv);
}

}  // namespace vesko
