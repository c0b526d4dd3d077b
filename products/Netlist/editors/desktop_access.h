/// The desktop, for code that has no factory at hand.
#pragma once

class IDesktop;
class IMessageSink;

/// The desktop of InitializeFactory, not owned; null before it.
extern IDesktop* gDesktop;

IDesktop* GetDesktop();
/// The desktop's message sink; null without a desktop.
IMessageSink* GetDesktopMessageSink();
