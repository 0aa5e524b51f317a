vexa_fuzz_target(display_format LINKS vexa_backend)
vexa_fuzz_target(layout LINKS vexa_backend)
target_sources(vexa_layout_fuzz PRIVATE ${PROJECT_SOURCE_DIR}/tests/unit/tables/arbitrary_table.cc)
