#include "platform/Form.h"
