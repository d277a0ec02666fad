// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkFrames.h"

#include "BrickAppearance.h"
#include "NetworkEdit.h"
#include "dzsettings.h"
#include "dzshaderbrick.h"
#include "dzundostack.h"

#include <QCoreApplication>
#include <QHash>
#include <QSet>

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("NetworkFrames", text);
}

/// Numbers for new frames: the smallest that no brick of a network has. Files may hold any.
class FreeFrameNumbers
{
public:
    explicit FreeFrameNumbers(const QVector<DzShaderBrick*>& bricks)
    {
        for (const DzShaderBrick* brick : bricks)
            m_taken.insert(BrickAppearance::frameNumber(brick));
    }

    int take()
    {
        do
            ++m_last;
        while (m_taken.contains(m_last));
        return m_last;
    }

private:
    QSet<int> m_taken;
    int m_last = 0;
};

void changeFrame(
    NetworkEdit* edit, const QVector<DzShaderBrick*>& bricks, int frame, const QString& title)
{
    edit->changeSettings(bricks, [&](DzShaderBrick* brick) {
        DzSettings* settings = brick->getBrickSettings();
        if (frame == 0) {
            settings->removeValue(BrickAppearance::frameKey());
            return;
        }
        DzSettings* tree = settings->getSettingsValue(BrickAppearance::frameKey());
        if (!tree)
            tree = settings->setSettingsValue(BrickAppearance::frameKey());
        tree->setIntValue(BrickAppearance::frameNumberKey(), frame);
        tree->setStringValue(BrickAppearance::frameTitleKey(), title);
    });
}

} // namespace

QVector<BrickFrame> framesOf(const NetworkEdit& edit)
{
    QVector<BrickFrame> frames;
    QHash<int, int> indexOf;
    const QVector<DzShaderBrick*> bricks = edit.getBricks();
    for (DzShaderBrick* brick : bricks) {
        const int number = BrickAppearance::frameNumber(brick);
        if (number == 0)
            continue;
        if (!indexOf.contains(number)) {
            indexOf.insert(number, frames.size());
            BrickFrame frame;
            frame.number = number;
            frame.title = BrickAppearance::frameTitle(brick);
            frames.append(frame);
        }
        frames[indexOf.value(number)].bricks.append(brick);
    }
    return frames;
}

BrickFrame findFrame(const NetworkEdit& edit, int number)
{
    const QVector<BrickFrame> frames = framesOf(edit);
    for (const BrickFrame& frame : frames)
        if (frame.number == number)
            return frame;
    return BrickFrame();
}

int frameBricks(NetworkEdit* edit, const QVector<DzShaderBrick*>& bricks, const QString& title)
{
    if (bricks.isEmpty())
        return 0;
    const int number = FreeFrameNumbers(edit->getBricks()).take();
    DzUndoStackHold hold;
    changeFrame(edit, bricks, number, title.simplified());
    hold.accept(tr("Frame Bricks"));
    return number;
}

void addToFrame(NetworkEdit* edit, const QVector<DzShaderBrick*>& bricks, int frame)
{
    const BrickFrame known = findFrame(*edit, frame);
    if (known.bricks.isEmpty())
        return;
    DzUndoStackHold hold;
    changeFrame(edit, bricks, frame, known.title);
    hold.accept(tr("Add to Frame"));
}

void removeFromFrames(NetworkEdit* edit, const QVector<DzShaderBrick*>& bricks)
{
    DzUndoStackHold hold;
    changeFrame(edit, bricks, 0, QString());
    hold.accept(tr("Remove from Frame"));
}

void setFrameTitle(NetworkEdit* edit, int frame, const QString& title)
{
    DzUndoStackHold hold;
    changeFrame(edit, findFrame(*edit, frame).bricks, frame, title.simplified());
    hold.accept(tr("Change Frame Title"));
}

void removeFrame(NetworkEdit* edit, int frame)
{
    DzUndoStackHold hold;
    changeFrame(edit, findFrame(*edit, frame).bricks, 0, QString());
    hold.accept(tr("Remove Frame"));
}

void renumberFrames(const NetworkEdit& edit, const QVector<DzShaderBrick*>& bricks)
{
    FreeFrameNumbers free(edit.getBricks());
    QHash<int, int> numbers;
    for (DzShaderBrick* brick : bricks) {
        const int before = BrickAppearance::frameNumber(brick);
        if (before <= 0)
            continue;
        if (!numbers.contains(before))
            numbers.insert(before, free.take());
        brick->getBrickSettings()
            ->getSettingsValue(BrickAppearance::frameKey())
            ->setIntValue(BrickAppearance::frameNumberKey(), numbers.value(before));
    }
}
