#include "app/Body.h"

#include "app/Messages.h"

void Body::setupShell()
{
    setupMessages();
}

void Body::setupMessages()
{
    messages_ = new Messages;
    windows_.append(messages_);
}
