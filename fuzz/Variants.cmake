zdm_add_fuzz(Variant ${PROJECT_SOURCE_DIR}/tests/support/TestStream.cpp)
