#include "platform/linux/atspi/session_bus.h"

#include <gio/gio.h>

#include <memory>

namespace vesko::atspi {
namespace {

constexpr int kCallTimeoutMs = 1000;
constexpr const char* kA11yBus = "org.a11y.Bus";
constexpr const char* kA11yPath = "/org/a11y/bus";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";

struct ObjectUnref {
  void operator()(gpointer object) const { g_object_unref(object); }
};
struct VariantUnref {
  void operator()(GVariant* value) const { g_variant_unref(value); }
};
using Variant = std::unique_ptr<GVariant, VariantUnref>;

std::string message(GError* error, std::string_view fallback) {
  std::string text = error ? error->message : std::string(fallback);
  if (error) g_error_free(error);
  return text;
}

std::expected<Variant, std::string> call(const char* destination, const char* path,
                                         const char* interface, const char* method,
                                         GVariant* arguments) {
  GError* error = nullptr;
  std::unique_ptr<GDBusConnection, ObjectUnref> bus(
      g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, &error));
  if (!bus) {
    if (arguments) g_variant_unref(g_variant_ref_sink(arguments));
    return std::unexpected("no session bus: " + message(error, "DBUS_SESSION_BUS_ADDRESS unset"));
  }
  GVariant* reply = g_dbus_connection_call_sync(bus.get(), destination, path, interface, method,
                                                arguments, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START,
                                                kCallTimeoutMs, nullptr, &error);
  if (!reply) return std::unexpected(message(error, "no reply"));
  return Variant(reply);
}

}  // namespace

std::expected<void, std::string> openApplicationsToAccessibility() {
  auto reply =
      call(kA11yBus, kA11yPath, kProperties, "Set",
           g_variant_new("(ssv)", "org.a11y.Status", "IsEnabled", g_variant_new_boolean(TRUE)));
  if (!reply) return std::unexpected(reply.error());
  return {};
}

std::expected<bool, std::string> applicationsOpenToAccessibility() {
  auto reply = call(kA11yBus, kA11yPath, kProperties, "Get",
                    g_variant_new("(ss)", "org.a11y.Status", "IsEnabled"));
  if (!reply) return std::unexpected(reply.error());
  GVariant* boxed = nullptr;
  g_variant_get(reply->get(), "(v)", &boxed);
  Variant value(boxed);
  if (!value || !g_variant_is_of_type(value.get(), G_VARIANT_TYPE_BOOLEAN))
    return std::unexpected(std::string("IsEnabled is not a boolean"));
  return g_variant_get_boolean(value.get()) != FALSE;
}

std::expected<bool, std::string> sessionNameHasOwner(std::string_view name) {
  auto reply = call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                    "NameHasOwner", g_variant_new("(s)", std::string(name).c_str()));
  if (!reply) return std::unexpected(reply.error());
  gboolean owned = FALSE;
  g_variant_get(reply->get(), "(b)", &owned);
  return owned != FALSE;
}

}  // namespace vesko::atspi
