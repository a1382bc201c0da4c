#include "audio/music/InterpreterOutcome.h"

#include <QRegularExpression>
#include <QStringDecoder>

namespace quill {

std::optional<QString> decodeUtf8Strictly(const QByteArray& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder.decode(bytes);
    if (decoder.hasError())
        return std::nullopt;
    return text;
}

QString messageFromInterpreterError(const QString& standardError) {
    static const QString marker = QStringLiteral("execution error: ");
    // \d as any decimal digit, as the system's own regular expressions read it.
    static const QRegularExpression errorNumber(QStringLiteral(" \\(-?\\d+\\)$"),
                                                QRegularExpression::UseUnicodePropertiesOption);
    QString message = standardError.trimmed();
    const qsizetype at = message.indexOf(marker);
    if (at >= 0)
        message = message.mid(at + marker.size());
    const QRegularExpressionMatch match = errorNumber.match(message);
    if (match.hasMatch())
        message.remove(match.capturedStart(), match.capturedLength());
    return message;
}

MusicOutcome outcomeFromInterpreter(const ProcessResult& result) {
    if (!result.started)
        return {false, result.startError};
    if (result.normalExit && result.exitCode == 0) {
        const std::optional<QString> output = decodeUtf8Strictly(result.standardOutput);
        const QString text = output ? output->trimmed() : QString();
        return {true, text.isEmpty() ? QStringLiteral("已开始随机播放") : text};
    }
    const std::optional<QString> error = decodeUtf8Strictly(result.standardError);
    if (!error)
        return {false, QStringLiteral("无法控制“音乐”App")};
    return {false, messageFromInterpreterError(*error)};
}

} // namespace quill
