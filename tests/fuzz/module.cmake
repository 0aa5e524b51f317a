find_package(XercesC REQUIRED GLOBAL)

vexa_fuzz_target(export LINKS vexa_export vexa_frame vexa_backend XercesC::XercesC TRANSCRIPTS "OUTPUT EXPORT" export)
target_sources(vexa_export_fuzz PRIVATE ${PROJECT_SOURCE_DIR}/tests/unit/viewerxml/xml_judge.cc)
target_compile_definitions(vexa_export_fuzz PRIVATE VEXA_SOURCE_FOLDER="${PROJECT_SOURCE_DIR}")
vexa_fuzz_target(modify LINKS vexa_modify vexa_frame vexa_backend TRANSCRIPTS "OUTPUT MODIFY" modify)
vexa_fuzz_target(modify_reply LINKS vexa_modify vexa_frame vexa_backend)
