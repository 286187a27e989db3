# The warnings, the optimisation and the sanitizers that every target of ours is built with.
add_library(vorn_flags INTERFACE)

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(vorn_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
    -Wcast-align=strict -Wcast-qual -Wformat=2 -Wnon-virtual-dtor -Woverloaded-virtual
    -Wduplicated-cond -Wlogical-op -Wimplicit-fallthrough=5 -Wmissing-declarations -Wextra-semi
    -Wundef -Wzero-as-null-pointer-constant -Werror)
else()
  target_compile_options(vorn_flags INTERFACE -Wall -Wextra)
endif()

# What follows null pointers through inlined code sees some in the standard library's streams that cannot
# be, and so do the sanitizers' own checks: only the system itself, which has no streams, is held to it.
add_library(vorn_core_flags INTERFACE)
target_link_libraries(vorn_core_flags INTERFACE vorn_flags)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT VORN_SANITIZE)
  target_compile_options(vorn_core_flags INTERFACE -Wnull-dereference)
endif()

# Sanitizers and fuzzing reach every object, also those of the tests' own helpers.
if(VORN_SANITIZE)
  add_compile_options(-Og -g1 -fsanitize=address,undefined -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(VORN_FUZZ)
  add_compile_options(-O1 -g -fsanitize=fuzzer-no-link,address,undefined
    -fno-sanitize-recover=all)
  add_link_options(-fsanitize=address,undefined)
endif()
