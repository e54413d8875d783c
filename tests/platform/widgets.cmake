# Tests of the control widgets, seen from the folder tests.
set(BEXLOW_WIDGET_TESTS
  platform/widgets_graph.cpp
  platform/widgets_graph_user.cpp
  platform/widgets_instruments.cpp
  platform/widgets_numedit.cpp)
