# Precompiled headers: what nearly every source includes, read once a target in place of once a
# source. They only save time: sources include what they use, and the clang preset builds without
# them. A compiler cache gains more than they do, and misses because of them.
if(CMAKE_CXX_COMPILER_LAUNCHER MATCHES "ccache")
  set(CMAKE_DISABLE_PRECOMPILE_HEADERS ON)
endif()

set(ZDM_PRECOMPILED
    [["platform/ole/ole.h"]]
    <algorithm> <array> <cstring> <functional> <map> <memory> <optional> <span> <string>
    <string_view> <unordered_map> <unordered_set> <utility> <vector>)
