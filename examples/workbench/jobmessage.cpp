// SPDX-License-Identifier: Apache-2.0
#include "jobmessage.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

namespace {

QJsonValue jsonOf(QSize size) { return QJsonArray{size.width(), size.height()}; }

QSize sizeOf(const QJsonValue& value) { return {value[0].toInt(-1), value[1].toInt(-1)}; }

QJsonValue jsonOf(const QRectF& rect)
{
    return QJsonArray{rect.x(), rect.y(), rect.width(), rect.height()};
}

QRectF rectOf(const QJsonValue& value)
{
    return {value[0].toDouble(), value[1].toDouble(), value[2].toDouble(), value[3].toDouble()};
}

QJsonObject jsonOf(const View& view)
{
    return {{"kind", int(view.kind)},
            {"bounds", jsonOf(view.bounds)},
            {"part", jsonOf(view.part)},
            {"mayBeDraft", view.mayBeDraft}};
}

View viewOf(const QJsonValue& json)
{
    return {View::Kind(json["kind"].toInt()), sizeOf(json["bounds"]), rectOf(json["part"]),
            json["mayBeDraft"].toBool()};
}

QJsonValue jsonOf(std::optional<bool> answer)
{
    return answer ? QJsonValue(*answer) : QJsonValue();
}

std::optional<bool> answerOf(const QJsonValue& value)
{
    return value.isBool() ? std::optional(value.toBool()) : std::nullopt;
}

QStringList textsOf(const QJsonValue& value)
{
    QStringList texts;
    const QJsonArray array = value.toArray();
    for (const auto text : array)
        texts.append(text.toString());
    return texts;
}

/// Only what a photograph depends on.
QJsonObject jsonOf(const Options& options)
{
    return {{"settings", jsonOf(options.settings)},
            {"maxMemory", options.maxMemory},
            {"isDryRun", options.isDryRun},
            {"verbose", options.verbose}};
}

Options optionsOf(const QJsonValue& json)
{
    Options options;
    options.settings = settingsOf(json["settings"].toObject());
    options.maxMemory = json["maxMemory"].toInteger();
    options.isDryRun = json["isDryRun"].toBool();
    options.verbose = json["verbose"].toBool();
    return options;
}

QJsonObject jsonOf(const JobResult& result)
{
    QJsonArray milliseconds;
    for (const double value : result.milliseconds)
        milliseconds.append(value);
    return {{"path", result.path},
            {"failure", result.failure},
            {"code", int(result.code)},
            {"failedStep", int(result.failedStep)},
            {"warnings", QJsonArray::fromStringList(result.warnings)},
            {"storedSize", jsonOf(result.storedSize)},
            {"size", jsonOf(result.size)},
            {"outputSize", jsonOf(result.outputSize)},
            {"metadata", result.metadata},
            {"key", QString::number(result.key)}, // JSON's numbers hold 53 bits
            {"isGrey", jsonOf(result.isGrey)},
            {"isLumaNoise", jsonOf(result.isLumaNoise)},
            {"output", result.output},
            {"bitmap", result.bitmap},
            {"thumbnail", result.thumbnail},
            {"isKept", result.isKept},
            {"isPlanned", result.isPlanned},
            {"isOwnOutput", result.isOwnOutput},
            {"milliseconds", milliseconds}};
}

JobResult resultOf(const QJsonValue& json)
{
    JobResult result;
    result.path = json["path"].toString();
    result.failure = json["failure"].toString();
    result.code = FailureCode(json["code"].toInt());
    result.failedStep = Step(json["failedStep"].toInt());
    result.warnings = textsOf(json["warnings"]);
    result.storedSize = sizeOf(json["storedSize"]);
    result.size = sizeOf(json["size"]);
    result.outputSize = sizeOf(json["outputSize"]);
    result.metadata = json["metadata"].toObject();
    result.key = json["key"].toString().toULongLong();
    result.isGrey = answerOf(json["isGrey"]);
    result.isLumaNoise = answerOf(json["isLumaNoise"]);
    result.output = json["output"].toString();
    result.bitmap = json["bitmap"].toString();
    result.thumbnail = json["thumbnail"].toString();
    result.isKept = json["isKept"].toBool();
    result.isPlanned = json["isPlanned"].toBool();
    result.isOwnOutput = json["isOwnOutput"].toBool();
    for (std::size_t step = 0; step < result.milliseconds.size(); ++step)
        result.milliseconds[step] = json["milliseconds"][qsizetype(step)].toDouble();
    return result;
}

QByteArray lineOf(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

} // namespace

Request requestFor(const Source& source, const Options& options, qint64 memoryShare)
{
    return {source.path, source.mayBeOutput, {},           memoryShare,
            options,     source.subfolder,   source.number};
}

QByteArray lineOf(const Request& request)
{
    return lineOf(QJsonObject{{"path", request.path},
                              {"subfolder", request.subfolder},
                              {"number", request.number},
                              {"mayBeOutput", request.mayBeOutput},
                              {"view", jsonOf(request.view)},
                              {"memoryShare", request.memoryShare},
                              {"options", jsonOf(request.options)}});
}

Request requestOf(const QByteArray& line)
{
    const QJsonObject json = QJsonDocument::fromJson(line).object();
    return {json["path"].toString(),    json["mayBeOutput"].toBool(),
            viewOf(json["view"]),       json["memoryShare"].toInteger(),
            optionsOf(json["options"]), json["subfolder"].toString(),
            json["number"].toInt()};
}

QByteArray lineOf(const Message& message)
{
    QJsonObject object{{"kind", int(message.kind)}};
    switch (message.kind) {
    case Message::Kind::Step:
        object.insert("step", int(message.step));
        break;
    case Message::Kind::Memory:
        object.insert("bytes", message.bytes);
        break;
    case Message::Kind::Temporary:
    case Message::Kind::Log:
        object.insert("text", message.text);
        break;
    case Message::Kind::Result:
        object.insert("result", jsonOf(message.result));
        break;
    case Message::Kind::Preview:
        object.insert("size", jsonOf(message.size));
        object.insert("bytes", message.bytes);
        object.insert("part", jsonOf(QRectF(message.part)));
        object.insert("whole", jsonOf(message.whole));
        object.insert("result", jsonOf(message.result));
        object.insert("isDraft", message.isDraft);
        object.insert("isGivenUp", message.isGivenUp);
        break;
    }
    return lineOf(object);
}

QByteArray lineOf(Interrupt interrupt) { return QByteArray::number(int(interrupt)) + '\n'; }

Interrupt interruptOf(const QByteArray& line)
{
    for (const Interrupt interrupt : {Interrupt::Picture, Interrupt::Decoding})
        if (line == lineOf(interrupt))
            return interrupt;
    return Interrupt::None;
}

std::optional<Message> messageOf(const QByteArray& line)
{
    const QJsonObject json = QJsonDocument::fromJson(line).object();
    const int kind = json["kind"].toInt(-1);
    if (kind < int(Message::Kind::Step) || kind > int(Message::Kind::Preview))
        return {};
    return Message{Message::Kind(kind),           Step(json["step"].toInt()),
                   json["bytes"].toInteger(),     json["text"].toString(),
                   sizeOf(json["size"]),          resultOf(json["result"]),
                   rectOf(json["part"]).toRect(), sizeOf(json["whole"]),
                   json["isDraft"].toBool(),      json["isGivenUp"].toBool()};
}
