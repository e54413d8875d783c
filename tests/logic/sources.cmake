set(BEXLOW_LOGIC_TESTS
  logic/values_test.cpp logic/link_test.cpp logic/config_test.cpp logic/download_test.cpp logic/graph_test.cpp)
