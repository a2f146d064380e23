# Hardening for every target of the project: what Debian's hardening=+all does, the standard library's
# assertions, and control-flow protection. Each option is used only where the compiler knows it.
#
# Included before the first target, so no target can be forgotten. tests/build reads the result off the
# installed program.
include(CheckCXXCompilerFlag)
include(CheckLinkerFlag)

# Checks of indices and preconditions in std::; the sanitizer builds keep them too.
add_compile_definitions(_GLIBCXX_ASSERTIONS)

# A sanitizer watches the same memory accesses in its own way: fortified calls would hide them from it.
if(CMAKE_CXX_FLAGS MATCHES "-fsanitize=")
  return()
endif()

set(hardening_flags -fPIE -fstack-protector-strong -fstack-clash-protection "-Wformat -Werror=format-security")
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64|i[3-6]86")
  list(APPEND hardening_flags -fcf-protection)
elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "aarch64|arm64")
  list(APPEND hardening_flags -mbranch-protection=standard)
endif()
foreach(flag IN LISTS hardening_flags)
  string(MAKE_C_IDENTIFIER "QUENDO_COMPILES${flag}" known)
  check_cxx_compiler_flag("${flag}" ${known})
  if(${known})
    separate_arguments(flag)
    add_compile_options(${flag})
  endif()
endforeach()

# Fortified calls need the optimizer. The first option makes way where the environment asks for a lower level.
add_compile_options("$<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=3>")

# Everything that is linked is a program; a library to load at run time would need -fPIC and no -pie.
foreach(flag -pie LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack)
  string(MAKE_C_IDENTIFIER "QUENDO_LINKS${flag}" known)
  check_linker_flag(CXX ${flag} ${known})
  if(${known})
    add_link_options(${flag})
  endif()
endforeach()
