#pragma once
// The controls that the forms are made of: state and events. On Windows each one drives a real window.
#include "platform/controls/button.h"
#include "platform/controls/control_of.h"
#include "platform/controls/form.h"
#include "platform/controls/image_list.h"
#include "platform/controls/list_bar.h"
#include "platform/controls/list_view.h"
#include "platform/controls/menu.h"
#include "platform/controls/socket.h"
#include "platform/controls/status.h"
#include "platform/controls/text.h"
#include "platform/controls/timer.h"
