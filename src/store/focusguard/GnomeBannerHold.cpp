#include "store/focusguard/GnomeBannerHold.h"

#include "store/focusguard/FocusGuardLog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace quill {

GnomeBannerHold::GnomeBannerHold(std::shared_ptr<BannerSwitch> bannerSwitch, QString markFile)
    : m_switch(std::move(bannerSwitch)), m_markFile(std::move(markFile)) {
    m_handled = marked();
    converge();
}

GnomeBannerHold::~GnomeBannerHold() {
    *m_alive = false;
    if (marked())
        m_switch->restoreOnExit(m_markFile);
}

template <class Step> auto GnomeBannerHold::guarded(Step step) {
    return [this, alive = std::weak_ptr<bool>(m_alive), step = std::move(step)](auto value) {
        if (auto a = alive.lock(); a && *a)
            step(value);
    };
}

bool GnomeBannerHold::marked() const {
    return QFileInfo(m_markFile).isFile();
}

bool GnomeBannerHold::writeMark() const {
    if (marked())
        return true;
    QDir().mkpath(QFileInfo(m_markFile).absolutePath());
    // NewOnly: never opens whatever else might sit at the path (a FIFO would block).
    QFile file(m_markFile);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
        qCWarning(lcFocusGuard) << "Banners left on: cannot write" << m_markFile
                                << file.errorString();
        return false;
    }
    file.write("Quillmere turned notification banners off for a focus round.\n");
    return file.flush();
}

void GnomeBannerHold::removeMark() const {
    QFile::remove(m_markFile);
}

void GnomeBannerHold::setHeld(bool held) {
    m_wanted = held;
    converge();
}

void GnomeBannerHold::probe(Answer answer) {
    m_switch->read(guarded([answer](std::optional<bool> on) { answer(on.has_value()); }));
}

void GnomeBannerHold::converge() {
    if (m_busy || m_wanted == m_handled)
        return;
    m_handled = m_wanted;
    m_busy = true;
    if (m_wanted)
        hold();
    else
        release();
}

void GnomeBannerHold::finishStep() {
    m_busy = false;
    converge();
}

void GnomeBannerHold::hold() {
    m_switch->read(guarded([this](std::optional<bool> on) {
        // Off already is the user's own choice, left alone and never turned on by us.
        if (!on.value_or(false) || !writeMark())
            return finishStep();
        m_switch->write(false, guarded([this](bool written) {
                            if (!written)
                                removeMark();
                            finishStep();
                        }));
    }));
}

void GnomeBannerHold::release() {
    if (!marked())
        return finishStep();
    m_switch->read(guarded([this](std::optional<bool> on) {
        if (!on) // unreadable now: the mark stays for the next start
            return finishStep();
        if (*on) { // the user turned banners on meanwhile
            removeMark();
            return finishStep();
        }
        m_switch->write(true, guarded([this](bool written) {
                            if (written)
                                removeMark();
                            finishStep();
                        }));
    }));
}

} // namespace quill
