# The warnings, the optimisation and the sanitizers that every target of ours is built with.
add_library(vorn_flags INTERFACE)

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(vorn_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
    -Wcast-align=strict -Wcast-qual -Wformat=2 -Wnon-virtual-dtor -Woverloaded-virtual
    -Wduplicated-cond -Wlogical-op -Wimplicit-fallthrough=5 -Wmissing-declarations -Wextra-semi
    -Wundef -Wzero-as-null-pointer-constant -Werror)
  # The sanitizers' own checks make the compiler see null pointers that cannot be.
  if(NOT VORN_SANITIZE)
    target_compile_options(vorn_flags INTERFACE -Wnull-dereference)
  endif()
else()
  target_compile_options(vorn_flags INTERFACE -Wall -Wextra)
endif()

# Sanitizers and fuzzing reach every object, also those of the tests' own helpers.
if(VORN_SANITIZE)
  add_compile_options(-Og -g -fsanitize=address,undefined -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(VORN_FUZZ)
  add_compile_options(-O1 -g -fsanitize=fuzzer-no-link,address,undefined
    -fno-sanitize-recover=all)
  add_link_options(-fsanitize=address,undefined)
endif()
