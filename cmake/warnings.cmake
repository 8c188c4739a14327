# Warnings every target of ours is built with.
add_library(vesko_warnings INTERFACE)
target_compile_options(vesko_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wcast-align -Wunused
  -Woverloaded-virtual -Wimplicit-fallthrough)
