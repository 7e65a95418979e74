# golden_sources: the program that makes the golden cases and their digests.
set(golden_sources geometry.cpp main.cpp maths.cpp operations.cpp parameters.cpp values.cpp)
list(TRANSFORM golden_sources PREPEND ${CMAKE_CURRENT_LIST_DIR}/)
