#include "platform/linux/atspi/atspi_reader.h"

#include <atspi/atspi.h>

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "platform/linux/atspi/toolkit_text.h"
#include "platform/linux/atspi/x_desktop.h"

namespace vesko::atspi {
namespace {

// Each call into an application must answer within this, so that a frozen application cannot
// hold a read near the controller's 4-second limit. Applications get it even in their first
// seconds (libatspi would otherwise wait up to 25 s for a young one).
constexpr int kCallTimeoutMs = 200;
constexpr int kLibraryTimeoutMs = 800;
constexpr int kLibraryStartupMs = 15000;
// Deep enough for any real widget tree; a cycle in a broken tree ends here.
constexpr int kMaxDepth = 64;

template <typename T>
struct Ref {
  T* object = nullptr;
  Ref() = default;
  explicit Ref(T* o) : object(o) {}
  Ref(Ref&& other) noexcept : object(std::exchange(other.object, nullptr)) {}
  Ref& operator=(Ref&& other) noexcept {
    std::swap(object, other.object);
    return *this;
  }
  ~Ref() {
    if (object) g_object_unref(object);
  }
  T* get() const { return object; }
  explicit operator bool() const { return object != nullptr; }
};

// Collects the GError of one call and drops it: a failure is simply "none" at that step.
class Error {
 public:
  ~Error() { g_clear_error(&error_); }
  GError** out() {
    g_clear_error(&error_);
    return &error_;
  }
  bool failed() const { return error_ != nullptr; }

 private:
  GError* error_ = nullptr;
};

class Timeout {
 public:
  Timeout() { atspi_set_timeout(kCallTimeoutMs, 0); }
  ~Timeout() { atspi_set_timeout(kLibraryTimeoutMs, kLibraryStartupMs); }
  Timeout(const Timeout&) = delete;
  Timeout& operator=(const Timeout&) = delete;
};

std::string takeString(gchar* text) {
  std::string out = text ? text : "";
  g_free(text);
  return out;
}

int coordinate(double v) {
  return static_cast<int>(std::floor(v));
}

// The deepest object at the point below `window`.
Ref<AtspiAccessible> deepestAt(AtspiAccessible* window, ScreenPoint point) {
  Ref<AtspiAccessible> current(static_cast<AtspiAccessible*>(g_object_ref(window)));
  Error error;
  for (int depth = 0; depth < kMaxDepth; ++depth) {
    Ref<AtspiComponent> component(atspi_accessible_get_component_iface(current.get()));
    if (!component) break;
    Ref<AtspiAccessible> child(atspi_component_get_accessible_at_point(
        component.get(), coordinate(point.x), coordinate(point.y), ATSPI_COORD_TYPE_SCREEN,
        error.out()));
    if (!child || child.get() == current.get()) break;
    current = std::move(child);
  }
  return current;
}

// The object itself or its nearest ancestor with Text: in a Qt text view the object at the point
// is the viewport, and its parent holds the text.
Ref<AtspiText> textAbove(Ref<AtspiAccessible> object) {
  Error error;
  for (int depth = 0; object && depth < kMaxDepth; ++depth) {
    if (Ref<AtspiText> text(atspi_accessible_get_text_iface(object.get())); text) return text;
    AtspiRole role = atspi_accessible_get_role(object.get(), error.out());
    if (role == ATSPI_ROLE_FRAME || role == ATSPI_ROLE_WINDOW || role == ATSPI_ROLE_APPLICATION)
      break;
    object = Ref<AtspiAccessible>(atspi_accessible_get_parent(object.get(), error.out()));
  }
  return {};
}

struct Found {
  Ref<AtspiText> text;
  std::string toolkit;
};

// The object with text at the point, in the application whose window X puts on top there (or,
// when X does not say, the first application with a window at the point).
std::optional<Found> textObjectAt(ScreenPoint point, std::optional<pid_t> pid,
                                  const AtspiReader::Note& note) {
  Error error;
  Ref<AtspiAccessible> desktop(atspi_get_desktop(0));
  if (!desktop) return std::nullopt;
  const int apps = atspi_accessible_get_child_count(desktop.get(), error.out());
  bool sawApplication = false;
  for (int i = 0; i < apps; ++i) {
    Ref<AtspiAccessible> app(atspi_accessible_get_child_at_index(desktop.get(), i, error.out()));
    if (!app) continue;
    if (pid && atspi_accessible_get_process_id(app.get(), error.out()) != static_cast<guint>(*pid))
      continue;
    sawApplication = true;
    const int windows = atspi_accessible_get_child_count(app.get(), error.out());
    for (int w = 0; w < windows; ++w) {
      Ref<AtspiAccessible> window(atspi_accessible_get_child_at_index(app.get(), w, error.out()));
      if (!window) continue;
      Ref<AtspiComponent> component(atspi_accessible_get_component_iface(window.get()));
      if (!component ||
          !atspi_component_contains(component.get(), coordinate(point.x), coordinate(point.y),
                                    ATSPI_COORD_TYPE_SCREEN, error.out()))
        continue;
      Ref<AtspiText> text = textAbove(deepestAt(window.get(), point));
      if (!text) {
        note("accessibilité : pas de texte accessible sous le pointeur");
        return std::nullopt;
      }
      return Found{std::move(text),
                   takeString(atspi_accessible_get_toolkit_name(app.get(), error.out()))};
    }
  }
  note(sawApplication ? "accessibilité : aucune fenêtre accessible sous le pointeur"
                      : "accessibilité : l'application sous le pointeur n'est pas accessible");
  return std::nullopt;
}

// The line method: the line holding the offset, when the character there is worth a lookup.
std::optional<TextAtPoint> lineAt(AtspiText* text, int offset, OffsetUnit unit) {
  Error error;
  AtspiTextRange* range =
      atspi_text_get_text_at_offset(text, offset, ATSPI_TEXT_BOUNDARY_LINE_START, error.out());
  if (!range) return std::nullopt;
  std::string content = range->content ? range->content : "";
  const int start = range->start_offset;
  g_free(range->content);
  g_free(range);
  if (content.find_first_not_of(" \t\r\n\v\f") == std::string::npos) return std::nullopt;
  auto found = textAtOffset(content, start, offset, unit);
  if (!found || !isLetterOrHanAt(found->text, found->index)) return std::nullopt;
  return found;
}

// The character-range method: 200 characters on either side of the offset.
std::optional<TextAtPoint> spanAt(AtspiText* text, int offset, OffsetUnit unit) {
  Error error;
  const int count = atspi_text_get_character_count(text, error.out());
  const Span span = spanAround(offset, error.failed() ? 0 : count);
  if (span.empty()) return std::nullopt;
  std::string content = takeString(atspi_text_get_text(text, static_cast<int>(span.start),
                                                       static_cast<int>(span.end), error.out()));
  if (error.failed() || content.empty()) return std::nullopt;
  return textAtOffset(content, span.start, offset, unit);
}

}  // namespace

struct AtspiReader::Session {
  GMainContext* context = nullptr;
  std::unique_ptr<XDesktop> x;
  ~Session() {
    if (context) g_main_context_unref(context);
  }
};

AtspiReader::AtspiReader(LastCharacterRect& lastRect, Note note)
    : lastRect_(lastRect), note_(std::move(note)) {
  if (!note_) note_ = [](std::string) {};
}

// The connection stays for the rest of the process: libatspi cannot be initialised again after
// atspi_exit, so a later reader in the same process would find nothing.
AtspiReader::~AtspiReader() = default;

std::optional<TextAtPoint> AtspiReader::read(ScreenPoint point) {
  std::lock_guard lock(mutex_);
  if (!session_) {
    session_ = std::make_unique<Session>();
    // 0 connected, 1 already connected earlier in this process, 2 no accessibility bus.
    const int status = atspi_init();
    if (status > 1) {
      note_("accessibilité : pas de bus d'accessibilité");
    } else {
      // libatspi's own messages (cache updates) are handled here, on the reading thread, never
      // by a main loop that happens to run on the default context.
      session_->context = g_main_context_new();
      atspi_set_main_context(session_->context);
    }
    session_->x = XDesktop::open();
  }
  if (!session_->context) return std::nullopt;
  while (g_main_context_iteration(session_->context, FALSE)) {
  }
  return readLocked(point);
}

std::optional<TextAtPoint> AtspiReader::readLocked(ScreenPoint point) {
  Timeout timeout;
  const std::optional<pid_t> pid = session_->x ? session_->x->processAt(point) : std::nullopt;
  auto found = textObjectAt(point, pid, note_);
  if (!found) return std::nullopt;
  AtspiText* text = found->text.get();
  const OffsetUnit unit = offsetUnitOf(found->toolkit);

  Error error;
  const int offset = atspi_text_get_offset_at_point(text, coordinate(point.x), coordinate(point.y),
                                                    ATSPI_COORD_TYPE_SCREEN, error.out());
  // Qt's plain-text view always answers -1 here (and misplaces its lines' boxes, so they cannot
  // stand in): screen recognition reads it instead.
  if (error.failed() || offset < 0) {
    note_("accessibilité : aucun caractère sous le pointeur");
    return std::nullopt;
  }
  AtspiRect* extents =
      atspi_text_get_character_extents(text, offset, ATSPI_COORD_TYPE_SCREEN, error.out());
  if (!extents) return std::nullopt;
  const ScreenRect box{static_cast<double>(extents->x), static_cast<double>(extents->y),
                       static_cast<double>(extents->width), static_cast<double>(extents->height)};
  g_free(extents);
  // Toolkits answer the nearest offset even beside the text; only a point on the character reads.
  if (!onCharacter(box, point)) {
    note_("accessibilité : pointeur dans la marge, hors du caractère");
    return std::nullopt;
  }
  lastRect_.store(box);

  auto result = lineAt(text, offset, unit);
  if (!result) result = spanAt(text, offset, unit);
  if (!result) {
    note_("accessibilité : texte vide sous le pointeur");
    return std::nullopt;
  }
  result->charRect = box;
  return result;
}

}  // namespace vesko::atspi
