/* A GTK window with known lines, for the end-to-end tests: in a text view, or with "--image" as
 * first argument painted on a drawing area, which exposes no text to accessibility (only screen
 * recognition can read it). Each other argument is a piece of its text; once the window is on
 * screen it prints, for each, the screen box of that piece's first character as "AT <n> <x> <y>
 * <width> <height>", then "READY", and stays open until it is killed. */

#include <gtk/gtk.h>
#include <stdio.h>
#include <string.h>

#include "e2e_lines.h"

static GtkWidget* view;
static char** targets;
static int targetCount;
static PangoLayout* painted; /* the image window's lines */

static const int kMargin = 20;
static const char* const kFont = "Noto Sans CJK SC 26px";

static gboolean paint(GtkWidget* widget, cairo_t* cairo, gpointer unused) {
  (void)unused;
  if (!painted) {
    painted = gtk_widget_create_pango_layout(widget, kE2ELines);
    PangoFontDescription* font = pango_font_description_from_string(kFont);
    pango_layout_set_font_description(painted, font);
    pango_font_description_free(font);
  }
  cairo_set_source_rgb(cairo, 1, 1, 1);
  cairo_paint(cairo);
  cairo_set_source_rgb(cairo, 0, 0, 0);
  cairo_move_to(cairo, kMargin, kMargin);
  pango_cairo_show_layout(cairo, painted);
  return TRUE;
}

static gboolean printPaintedBoxes(void) {
  int originX = 0, originY = 0;
  gdk_window_get_origin(gtk_widget_get_window(view), &originX, &originY);
  for (int i = 0; i < targetCount; ++i) {
    const char* found = strstr(kE2ELines, targets[i]);
    if (!found || !painted) {
      printf("MISSING %d\n", i);
      continue;
    }
    PangoRectangle box;
    pango_layout_index_to_pos(painted, (int)(found - kE2ELines), &box);
    printf("AT %d %d %d %d %d\n", i, originX + kMargin + PANGO_PIXELS(box.x),
           originY + kMargin + PANGO_PIXELS(box.y), PANGO_PIXELS(box.width),
           PANGO_PIXELS(box.height));
  }
  printf("READY\n");
  fflush(stdout);
  return G_SOURCE_REMOVE;
}

static gboolean printBoxes(gpointer unused) {
  (void)unused;
  if (!GTK_IS_TEXT_VIEW(view)) return printPaintedBoxes();
  GtkTextBuffer* buffer = gtk_text_view_get_buffer(GTK_TEXT_VIEW(view));
  GdkWindow* window = gtk_widget_get_window(view);
  int originX = 0, originY = 0;
  gdk_window_get_origin(window, &originX, &originY);
  for (int i = 0; i < targetCount; ++i) {
    const char* found = strstr(kE2ELines, targets[i]);
    if (!found) {
      printf("MISSING %d\n", i);
      continue;
    }
    GtkTextIter iter;
    gtk_text_buffer_get_iter_at_offset(buffer, &iter,
                                       (gint)g_utf8_pointer_to_offset(kE2ELines, found));
    GdkRectangle box;
    gtk_text_view_get_iter_location(GTK_TEXT_VIEW(view), &iter, &box);
    int x = 0, y = 0;
    gtk_text_view_buffer_to_window_coords(GTK_TEXT_VIEW(view), GTK_TEXT_WINDOW_WIDGET, box.x, box.y,
                                          &x, &y);
    printf("AT %d %d %d %d %d\n", i, originX + x, originY + y, box.width, box.height);
  }
  printf("READY\n");
  fflush(stdout);
  return G_SOURCE_REMOVE;
}

static gboolean mapped(GtkWidget* widget, GdkEvent* event, gpointer unused) {
  (void)widget, (void)event, (void)unused;
  /* The window manager may still move the frame just after mapping. */
  g_timeout_add(600, printBoxes, NULL);
  return FALSE;
}

int main(int argc, char** argv) {
  gtk_init(&argc, &argv);
  const gboolean image = argc > 1 && strcmp(argv[1], "--image") == 0;
  targets = argv + (image ? 2 : 1);
  targetCount = argc - (image ? 2 : 1);
  GtkWidget* window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
  gtk_window_set_title(GTK_WINDOW(window), "vesko-e2e-gtk");
  gtk_window_set_default_size(GTK_WINDOW(window), 900, 420);
  gtk_window_move(GTK_WINDOW(window), 40, 40);
  if (image) {
    view = gtk_drawing_area_new();
    g_signal_connect(view, "draw", G_CALLBACK(paint), NULL);
  } else {
    view = gtk_text_view_new();
    gtk_text_view_set_editable(GTK_TEXT_VIEW(view), FALSE);
    gtk_text_buffer_set_text(gtk_text_view_get_buffer(GTK_TEXT_VIEW(view)), kE2ELines, -1);
    GtkCssProvider* css = gtk_css_provider_new();
    gtk_css_provider_load_from_data(css, "textview { font: 26px \"Noto Sans CJK SC\", sans; }", -1,
                                    NULL);
    gtk_style_context_add_provider(gtk_widget_get_style_context(view), GTK_STYLE_PROVIDER(css),
                                   GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
  }
  gtk_container_add(GTK_CONTAINER(window), view);
  g_signal_connect(window, "map-event", G_CALLBACK(mapped), NULL);
  g_signal_connect(window, "destroy", G_CALLBACK(gtk_main_quit), NULL);
  gtk_widget_show_all(window);
  gtk_main();
  return 0;
}
