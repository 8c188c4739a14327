#include "desktop/freshness.h"

#include "desktop/trace.h"
#include "learn/word_store.h"
#include "settings/loc.h"
#include "settings/settings.h"

namespace vesko::desktop {

Freshness::Freshness(DesktopContext& context)
    : context_(context), language_(interfaceLanguage()) {
  second_.setInterval(1000);
  connect(&second_, &QTimer::timeout, this, &Freshness::check);
}

void Freshness::start() {
  second_.start();
}

std::string Freshness::interfaceLanguage() const {
  std::string language = context_.loc.uiLanguage();
  if (language == "zh" && context_.loc.isTraditional()) language = "zh-Hant";
  return language;
}

void Freshness::check() {
  context_.settings.reloadIfChanged();
  // A settings window's choice is written at once, so it shows here too.
  if (std::string language = interfaceLanguage(); language != language_) {
    language_ = std::move(language);
    context_.trace.event("language", {{"uiLang", language_}});
    emit context_.events.languageChanged();
  }
  if (context_.store.reloadIfChanged()) emit context_.events.wordsChanged();
  context_.store.flushIfDue();
}

}  // namespace vesko::desktop
