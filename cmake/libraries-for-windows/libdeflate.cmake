# Compression and decompression. What a processor offers is found out at run time.
file(GLOB files ${source}/lib/*.c ${source}/lib/x86/*.c)
add_library(deflate STATIC ${files})
target_compile_options(deflate PRIVATE -O2)
target_include_directories(deflate PUBLIC ${source})
list(APPEND exported_targets deflate)
