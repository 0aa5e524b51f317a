vexa_fuzz_target(zip_archive LINKS vexa_frontend)
vexa_fuzz_target(xml_text LINKS vexa_frontend)
