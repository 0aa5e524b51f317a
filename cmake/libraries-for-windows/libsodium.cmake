# Cryptography. Its own configuration takes much longer than its compilation; what that would find out is known here.
#
# Processors with SSE are used as they are found at run time, but none with AVX: the compiler keeps no stack of this system
# aligned for its registers.
file(GLOB_RECURSE files ${source}/src/libsodium/*.c)
# Among its own headers, where the others look for it.
configure_file(${source}/builds/msvc/version.h ${source}/src/libsodium/include/sodium/version.h COPYONLY)
add_library(sodium STATIC ${files})
target_compile_options(sodium PRIVATE -O2)
target_compile_definitions(sodium PUBLIC SODIUM_STATIC PRIVATE
  CONFIGURED NATIVE_LITTLE_ENDIAN HAVE_ATOMIC_OPS HAVE_C_VARARRAYS HAVE_CPUID HAVE_INLINE_ASM HAVE_TI_MODE
  HAVE_MMINTRIN_H HAVE_EMMINTRIN_H HAVE_PMMINTRIN_H HAVE_TMMINTRIN_H HAVE_SMMINTRIN_H)
target_include_directories(sodium PUBLIC ${source}/src/libsodium/include PRIVATE ${source}/src/libsodium/include/sodium)
list(APPEND exported_targets sodium)
