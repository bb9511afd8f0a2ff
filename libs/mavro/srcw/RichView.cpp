#include "RichView.h"

#include "NativeRich.h"
#include "SysImpl.h"

namespace mavro {

class RichView::Impl : public SysImpl {
 public:
  Impl() { textIsLive = false; }

  void Create() override { CreateNative("RichEdit50W", cWantsKeys); }

  Param OnNotify(NotifyHeader* header) override {
    if (header->code != EN_LINK) return 1;
    ItemArgs args;
    args.sender = owner;
    args.text = static_cast<const RichHeader*>(header)->link;
    static_cast<RichView*>(owner)->onLink.Fire(args);
    return 0;
  }

  NativeRichView* Window() const { return static_cast<NativeRichView*>(hwnd); }
};

RichView::RichView() : Control(new Impl) {}

void RichView::SelectAll() {
  if (impl->hwnd) static_cast<Impl*>(impl)->Window()->SelectAll();
}

std::string RichView::SelectedText() const {
  return impl->hwnd ? static_cast<Impl*>(impl)->Window()->SelectedText() : std::string();
}

std::string RichView::PlainText() const {
  return impl->hwnd ? static_cast<Impl*>(impl)->Window()->PlainText() : std::string();
}

}  // namespace mavro
