vexa_fuzz_target(document_file LINKS vexa_frontend)
vexa_fuzz_target(document_item LINKS vexa_frontend)
vexa_fuzz_target(modify_request LINKS vexa_frontend)
target_sources(vexa_modify_request_fuzz PRIVATE ${PROJECT_SOURCE_DIR}/tests/unit/requests/request_text.cc)
