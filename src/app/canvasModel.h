#pragma once

#include "model/modelBuilder.h"
#include "model/modelSource.h"

class cDialogRes;
class cGlobalCodeDialog;
class cTQLink;
class cTQNetworkElement;
class cTQScene;

/// The model on the canvas and in its dialogs, as the reader of model files fills it and as the writer asks for it.
class cCanvasModel : public cModelBuilder, public cModelSource {
public:
    /// All of these must live as long as this.
    cCanvasModel(cNetwork& drawnNetwork, cTQScene& canvas, cDialogRes& typeDialog, cGlobalCodeDialog& codeEditor);

    cNetwork& network() override { return model; }

    // ---- what a file holds goes to the canvas

    /// Replacement characters stand for what can't be understood.
    std::string decoded(const std::string& line) override;
    void addResourceType(const std::string& name, const std::string& kind) override;
    void setSaveProps(const std::string& typeName, const std::string& names) override;
    std::shared_ptr<cNetworkElement> makeNode(const std::string& kind, cResType* type) override;
    std::shared_ptr<cNetworkElement> makeFusionQueue(const std::string& name, const std::string& queueName) override;
    std::shared_ptr<cLink> makeLink(const std::string& name) override;
    bool attachStart(cLink& link, cNetworkElement& element) override;
    bool attachEnd(cLink& link, cNetworkElement& element) override;
    /// A position that is no number or infinite is passed over.
    void place(cNetworkElement& element, double x, double y) override;
    /// The numbers are those of the engine's nodes, also for an end that sits on a fusion queue. One that a node
    /// doesn't have is passed over.
    void setConnectionPoints(cLink& link, int start, int end) override;
    void setGlobalCode(const std::string& text) override;
    void finish() override;

    // ---- what is on the canvas goes to a file

    std::vector<cSavedType> resourceTypes() override;
    std::optional<std::string> typedText(const cNetworkElement& element, std::string_view keyword) override;
    cSavedPlace place(const cNetworkElement& element) override;
    std::string fusedQueue(const cNetworkElement& fusionQueue) override;
    cSavedEnd linkEnd(const cLink& link, bool isStart) override;
    std::string globalCode() override;

private:
    void insert(cNetworkElement& element);

    cNetwork& model;
    cTQScene& scene;
    cDialogRes& types;
    cGlobalCodeDialog& code;
};
