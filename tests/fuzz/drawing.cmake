if(TARGET vexa_drawing_parts)
  vexa_fuzz_target(drawing LINKS vexa_frontend vexa_drawing_parts)
  if(TEST fuzz-corpus-drawing)
    # Whole stacks, so that what the libraries lose in hostile drawings is told from what is lost here.
    set_tests_properties(fuzz-corpus-drawing PROPERTIES
      ENVIRONMENT "ASAN_OPTIONS=detect_leaks=1:fast_unwind_on_malloc=0")
  endif()
endif()
