if(TARGET vexa_drawing_parts)
  vexa_fuzz_target(drawing LINKS vexa_frontend vexa_drawing_parts)
endif()
