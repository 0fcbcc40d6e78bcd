#pragma once

#include "platform/Forms.h"

#include <gtest/gtest.h>

namespace orvantine {

/// What every service of forms does alike with a form that is up: asked to show it modal, it returns at once, and
/// neither loads nor takes away what is seen. The form is one that the service can show.
inline void expectAFormThatIsUpToStayAsItIs(Forms& forms, Form& form)
{
    int loads = 0;
    int unloads = 0;
    form.Load = [&loads] { ++loads; };
    form.Unload = [&unloads] { ++unloads; };
    forms.show(form);
    forms.showModal(form);
    EXPECT_TRUE(form.Visible.value());
    EXPECT_EQ(1, loads);
    EXPECT_EQ(0, unloads);
    forms.unload(form);
    EXPECT_FALSE(form.Visible.value());
    EXPECT_EQ(1, unloads);
}

} // namespace orvantine
