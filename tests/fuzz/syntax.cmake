vexa_fuzz_target(tokens LINKS vexa_backend)
vexa_fuzz_target(syntax LINKS vexa_backend)
target_sources(vexa_syntax_fuzz PRIVATE ${PROJECT_SOURCE_DIR}/tests/unit/syntax/example_grammars.cc)
