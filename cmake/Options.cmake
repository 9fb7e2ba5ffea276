# What every target is compiled with: a compiler cache, warnings, sanitizers, hardening.

# Another launcher, or none, is chosen by the variable of that name, CMake's or the environment's.
find_program(CCACHE ccache)
if(CCACHE AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE}")
endif()

add_library(tarvel_options INTERFACE)
target_compile_options(tarvel_options INTERFACE
    -Wall -Wextra -Wpedantic $<$<CXX_COMPILER_ID:GNU>:-Wshadow=local> -Wconversion -Wsign-conversion -Wold-style-cast
    -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wformat=2 -Wnull-dereference
    -Wno-missing-field-initializers)
if(WARNINGS_AS_ERRORS)
    target_compile_options(tarvel_options INTERFACE -Werror)
endif()

if(SANITIZE)
    target_compile_options(tarvel_options INTERFACE
        -fsanitize=${SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(tarvel_options INTERFACE -fsanitize=${SANITIZE})
endif()

if(HARDENING)
    target_compile_options(tarvel_options INTERFACE
        -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3 -D_GLIBCXX_ASSERTIONS
        $<$<CXX_COMPILER_ID:GNU>:-ftrivial-auto-var-init=zero>
        -fstack-protector-strong -fstack-clash-protection -fcf-protection)
    # -fPIC at the link is for link-time optimisation: Qt's own data must not be copied into the
    # program, as code for a mere -fPIE would do; the two copies differ, and signals crash.
    target_link_options(tarvel_options INTERFACE -pie -fPIC -Wl,-z,relro,-z,now,-z,noexecstack)
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
endif()
