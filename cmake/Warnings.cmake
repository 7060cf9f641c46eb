# Warnings, sanitizers and link options that every target of the project shares.
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion
                    -Wimplicit-fallthrough -Wnull-dereference -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 reports reads past the end in its own inlined string code at -O2 and above.
  add_compile_options(-Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread
                      -Wno-restrict -Wno-null-dereference)
endif()
if(ZDM_SANITIZE)
  add_compile_options(-fsanitize=${ZDM_SANITIZE} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${ZDM_SANITIZE})
endif()
if(WIN32)
  # A shipped DLL and its programs stand alone: no compiler runtime beside them.
  add_link_options(-static -static-libgcc -static-libstdc++)
  add_compile_definitions(UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
endif()
