# Settings every target of the project shares: language level, warnings,
# sanitizers and Qt strictness. Targets link quorvane_common to get them.
add_library(quorvane_common INTERFACE)

target_compile_features(quorvane_common INTERFACE cxx_std_20)

target_compile_definitions(quorvane_common INTERFACE
    QT_NO_CONTEXTLESS_CONNECT
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_DISABLE_DEPRECATED_UP_TO=0x060000)

# buildconfig.h: the version and the install layout, for every target.
configure_file(${CMAKE_CURRENT_LIST_DIR}/buildconfig.h.in
               ${PROJECT_BINARY_DIR}/generated/buildconfig.h @ONLY)
target_include_directories(quorvane_common INTERFACE ${PROJECT_BINARY_DIR}/generated)

if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(quorvane_common INTERFACE -Wall -Wextra -Wpedantic)
    if(QUORVANE_WARNINGS_AS_ERRORS)
        target_compile_options(quorvane_common INTERFACE -Werror)
    endif()
    if(QUORVANE_SANITIZE)
        target_compile_options(quorvane_common INTERFACE
            -fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
        target_link_options(quorvane_common INTERFACE -fsanitize=address,undefined)
    endif()
elseif(MSVC)
    target_compile_options(quorvane_common INTERFACE /W4 /utf-8)
    if(QUORVANE_WARNINGS_AS_ERRORS)
        target_compile_options(quorvane_common INTERFACE /WX)
    endif()
endif()
