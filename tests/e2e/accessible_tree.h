#pragma once
// Reads another application's windows the way a screen reader does, over AT-SPI: every object of
// the application with its role, its name and its box on screen, so that an end-to-end test can
// find a button by the text the learner sees and click it where it is. One thread.

#include <atspi/atspi.h>

#include <string>
#include <vector>

#include "e2e/e2e_desktop.h"

namespace vesko::e2e {

struct AccessibleNode {
  std::string role;  // "push button", "label", "frame"…
  std::string name;
  Box box;           // screen coordinates
};

namespace accessible_detail {

inline std::string take(gchar* text) {
  std::string out = text ? text : "";
  g_free(text);
  return out;
}

inline void walk(AtspiAccessible* node, int depth, std::vector<AccessibleNode>& out) {
  if (!node || depth > 40 || out.size() > 5000) return;
  AccessibleNode item;
  item.role = take(atspi_accessible_get_role_name(node, nullptr));
  item.name = take(atspi_accessible_get_name(node, nullptr));
  if (AtspiComponent* component = atspi_accessible_get_component_iface(node)) {
    if (AtspiRect* rect = atspi_component_get_extents(component, ATSPI_COORD_TYPE_SCREEN, nullptr)) {
      item.box = Box{rect->x, rect->y, rect->width, rect->height};
      g_free(rect);
    }
    g_object_unref(component);
  }
  out.push_back(std::move(item));
  const int count = atspi_accessible_get_child_count(node, nullptr);
  for (int i = 0; i < count && i < 1000; ++i) {
    AtspiAccessible* child = atspi_accessible_get_child_at_index(node, i, nullptr);
    walk(child, depth + 1, out);
    if (child) g_object_unref(child);
  }
}

}  // namespace accessible_detail

// Every object of the running application called `application` (its accessible name, for a Qt
// program its executable's name); empty when it is not on the bus.
inline std::vector<AccessibleNode> accessibleNodes(const std::string& application) {
  static const bool initialised = [] {
    atspi_init();
    atspi_set_timeout(2000, 2000);
    return true;
  }();
  (void)initialised;
  std::vector<AccessibleNode> out;
  AtspiAccessible* desktop = atspi_get_desktop(0);
  if (!desktop) return out;
  const int apps = atspi_accessible_get_child_count(desktop, nullptr);
  for (int i = 0; i < apps; ++i) {
    AtspiAccessible* app = atspi_accessible_get_child_at_index(desktop, i, nullptr);
    if (!app) continue;
    if (accessible_detail::take(atspi_accessible_get_name(app, nullptr)) == application)
      accessible_detail::walk(app, 0, out);
    g_object_unref(app);
  }
  g_object_unref(desktop);
  return out;
}

}  // namespace vesko::e2e
