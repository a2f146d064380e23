# What the Linux back-end needs of the system below the toolkit: files and threads. A library of its own,
# so that tests and benchmarks use it without a display.
set(QUENDO_POSIX_SOURCES EnvironmentLocale.cpp ExecutableBundle.cpp PosixDocumentFiles.cpp PosixFileManager.cpp
    SandboxProbe.cpp ThreadSerialQueue.cpp)
list(TRANSFORM QUENDO_POSIX_SOURCES PREPEND ${CMAKE_CURRENT_LIST_DIR}/ OUTPUT_VARIABLE posix_paths)

add_library(quendo_posix STATIC ${posix_paths})
target_link_libraries(quendo_posix PUBLIC quendo_core Threads::Threads PRIVATE quendo_warnings)
