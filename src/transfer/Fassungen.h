#pragma once

#include "platform/Form.h"
#include "platform/ListView.h"
#include "transfer/VersionShelf.h"

#include <optional>
#include <vector>

namespace orvantine {

/// One earlier version, to look into.
struct Fassung : Form
{
    Fassung();

    Label LKopf{controls, u"LKopf"};
    /// What it holds as text, a line each; out of sight for a picture.
    TextBox tInhalt{controls, u"tInhalt"};
    /// Shows `Bytes`; out of sight for all else.
    PictureBox pBild{controls, u"pBild"};
    Button bAbbrechen{controls, u"bAbbrechen"};

    QProperty<QByteArray> Bytes;
};

/// The earlier versions of lists, covers and the database: looks into them, brings them back, saves them elsewhere.
struct Fassungen : Form
{
    Fassungen();

    Label LFilter{controls, u"LFilter"};
    /// Leaves the files whose name or path contains it.
    TextBox tFilter{controls, u"tFilter"};
    Label LDateienCaption{controls, u"LDateienCaption"};
    ListView LDateien{controls, u"LDateien"};
    Label LPfad{controls, u"LPfad"};
    Label LFassungenCaption{controls, u"LFassungenCaption"};
    ListView LFassungen{controls, u"LFassungen"};
    /// What came of the last step.
    Label LMeldung{controls, u"LMeldung"};
    /// The room that all of them take.
    Label LPlatz{controls, u"LPlatz"};
    Button bAnsehen{controls, u"bAnsehen"};
    Button bZurückholen{controls, u"bZurückholen"};
    Button bSpeichernUnter{controls, u"bSpeichernUnter"};
    Button bAbbrechen{controls, u"bAbbrechen"};
    Button bHilfe{controls, u"bHilfe"};
    /// Compares the versions in sight with what stands now, a few at a time.
    Timer tVergleich{controls, u"tVergleich", std::chrono::milliseconds{30}};

    std::vector<ShelvedFile> files;
    /// Indexes into `files` of the rows in sight.
    std::vector<std::size_t> shown;
    /// By row of the versions, whether it tells what it holds and how that differs.
    std::vector<bool> compared;

    /// What stands at the place of the selected file, as it was read last.
    struct Present
    {
        std::optional<FileStamp> stamp;
        ReadOutcome outcome = ReadOutcome::Missing;
        QByteArray bytes;
        QStringList lines;
    };
    std::optional<Present> present;
};

void setUpFassungen(Root& root);

void mnuFassungen_Click(Root& root);

} // namespace orvantine
