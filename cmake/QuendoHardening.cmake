# Hardening for all targets: Debian's hardening=+all, standard library assertions, and control-flow
# protection. Each option is used only if the compiler supports it. Included before the first target, so none
# is missed. tests/build checks the installed program for the result.
include(CheckCXXCompilerFlag)
include(CheckLinkerFlag)

# Index and precondition checks in std::; sanitizer builds keep them.
add_compile_definitions(_GLIBCXX_ASSERTIONS)

# Sanitizers check the same memory accesses themselves; fortified calls would hide them.
if(CMAKE_CXX_FLAGS MATCHES "-fsanitize=")
  return()
endif()

set(hardening_flags -fPIE -fstack-protector-strong "-Wformat -Werror=format-security")
# Accepted for macOS, and ignored with a warning.
if(NOT APPLE)
  list(APPEND hardening_flags -fstack-clash-protection)
endif()
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64|i[3-6]86")
  list(APPEND hardening_flags -fcf-protection)
elseif(NOT APPLE AND CMAKE_SYSTEM_PROCESSOR MATCHES "aarch64|arm64")
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

# Fortified calls need optimisation. -U first, in case the environment sets a lower level.
add_compile_options("$<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=3>")

# Everything linked is an executable; a shared library would need -fPIC instead of -pie.
foreach(flag -pie LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack)
  string(MAKE_C_IDENTIFIER "QUENDO_LINKS${flag}" known)
  check_linker_flag(CXX ${flag} ${known})
  if(${known})
    add_link_options(${flag})
  endif()
endforeach()
