#pragma once
// Screen capture on X11: the pixels of a rectangle of the root window through the shared-memory
// extension, with one segment reused from capture to capture, or through XGetImage when the
// extension is missing (a remote display). Holds its own Display connection, so it never shares
// Xlib state with the toolkit's. Created once; captures from any thread are serialised on one
// mutex (each takes well under a millisecond), so one object serves every read thread.

#include <expected>
#include <memory>
#include <mutex>
#include <string>

#include "app/screen_capture.h"

namespace vesko {

class XShmCapture final : public ScreenCapture {
 public:
  // Opens `displayName` (empty: $DISPLAY); an error text when no X display can be opened.
  // `sharedMemory` false forces XGetImage, for comparing the two.
  static std::expected<std::unique_ptr<XShmCapture>, std::string> open(
      const std::string& displayName = {}, bool sharedMemory = true);
  ~XShmCapture() override;
  XShmCapture(const XShmCapture&) = delete;
  XShmCapture& operator=(const XShmCapture&) = delete;

  // RGB pixels of `rect` cut to the root window; screen points are X pixels here (scale 1).
  std::expected<ScreenImage, std::string> capture(const ScreenRect& rect) override;
  // Whether captures go through the shared-memory extension (false: the XGetImage fallback).
  bool sharedMemory() const;

 private:
  struct State;
  explicit XShmCapture(std::unique_ptr<State> state);
  std::unique_ptr<State> state_;  // guarded by mutex_
  mutable std::mutex mutex_;
};

}  // namespace vesko
