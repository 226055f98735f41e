#pragma once

#include "diary/diary_screen.h"
#include "move/move_screen.h"
#include "platform/instance_guard.h"
#include "session/run/outside.h"
#include "session/run/session_frame.h"

namespace session {

/// The client put together: every module object once, each given what it uses. Nothing is opened or shown by that.
struct Modules {
    /// `end` ends the session and the process.
    Modules(const Outside& outside, std::function<void()> end);

    const Outside& outside;
    platform::InstanceGuard instances;
    platform::KeptFiles kept;
    SessionContext context;
    suite::RunHistory history{context, outside.clock};
    DataAccess data{context, history};
    Environment environment{context, data, history, outside.host, outside.names};
    identity::StaffIdentity staff{context, data, outside.host};
    identity::PinDialog pinDialog{context, data, staff, outside.host, outside.clock, history};
    identity::Permissions permissions{context, data, staff, pinDialog, outside.host};
    identity::CompanyLoader company{context, data};
    numbers::NumberSeries series{context, data, outside.host, outside.clock};
    numbers::PhoneDirectory phones{context, data, outside.clock};
    suite::ViewingLog viewingLog{context, data, series, outside.clock};
    suite::LinkMessages links{context, data, environment, staff, outside.clock};
    suite::SiblingCalls siblings{context, data, environment, staff, outside.host, outside.clock};
    SessionFrame frame{context, data, environment, history, links, staff, outside};
    lists::PickState pick;
    attachments::AttachmentStore attachments{context, data, outside.clock};
    diary::DiaryContext diary;
    diary::DiaryScreen screen{diary};
    move::MoveContext move{diary};
    move::MoveScreen moveScreen{move};
};

}  // namespace session
