#include "HeadlessForm.h"

#include <utility>

namespace qel::forms {

HeadlessForm::HeadlessForm(RecordStore& store, std::function<void()> on_change)
    : platform_(std::make_shared<const headless::HeadlessPlatform>()),
      title_(title_site_, platform_),
      body_(body_site_, platform_),
      form_(store, title_, body_, std::move(on_change)) {}

}  // namespace qel::forms
