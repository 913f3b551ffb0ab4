#include "ui/widgets/notice.h"

#include <deque>

#include "i18n/i18n.h"
#include "ui/widgets/dialog.h"

namespace ui {

namespace {

struct Notice {
  std::string title, message;
};

std::deque<Notice>& queue() {
  static std::deque<Notice> q;
  return q;
}

}  // namespace

void postNotice(const std::string& title, const std::string& message) { queue().push_back({title, message}); }

bool noticePending() { return !queue().empty(); }

void noticeLayer(Ctx& ctx) {
  if (queue().empty()) return;
  const Notice& n = queue().front();
  if (confirmDialog(ctx, n.title, n.message, i18n::tr("common.ok"), "") != 0) {
    queue().pop_front();
    // The screen beneath, or the next notice, is drawn at once.
    ctx.requestFrameAt(ctx.time);
  }
}

}  // namespace ui
