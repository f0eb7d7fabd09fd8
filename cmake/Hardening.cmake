# Adds the compiler's and linker's options against the abuse of memory faults to release builds only.
# packaging/check-hardening.sh checks the built programs for their effects.
if(CMAKE_BUILD_TYPE STREQUAL "Release")
    include(CheckCXXCompilerFlag)
    include(CheckPIESupported)
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
    check_pie_supported(LANGUAGES CXX)
    # Some compilers predefine another level.
    add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -Wformat -Werror=format-security)
    foreach(flag -fstack-protector-strong -fstack-clash-protection -fcf-protection)
        string(MAKE_C_IDENTIFIER "BURNWICK_HAS${flag}" known)
        check_cxx_compiler_flag(${flag} ${known})
        if(${known})
            add_compile_options(${flag})
        endif()
    endforeach()
    if(NOT APPLE) # where these are the default
        add_link_options(-Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
    endif()
endif()
