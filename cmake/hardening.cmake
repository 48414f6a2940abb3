# What distributions build with, for everything here: the library, the stand-in host, the inspector. The flags are
# those of the build's configurations that optimise; a Debug build has no checked calls, which need optimisation.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)

add_compile_options(
    -fstack-protector-strong
    -Wformat -Werror=format-security
    $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
# Where the target has it: jumps and returns go only where they may go. Nothing here has a stack frame that could step over
# a guard page, so -fstack-clash-protection would only cost.
foreach(flag -fcf-protection -mbranch-protection=standard)
    string(MAKE_C_IDENTIFIER netpublic_has${flag} known)
    check_cxx_compiler_flag(${flag} ${known})
    if(${known})
        add_compile_options(${flag})
    endif()
endforeach()
# Addresses of functions are looked up at the start, and read-only from then on.
add_link_options(LINKER:-z,relro LINKER:-z,now)
# Programs at a random address.
check_pie_supported(LANGUAGES CXX)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
