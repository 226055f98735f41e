#include "bench/bare_store.h"

#include <QSqlRecord>
#include <QVariant>

#include "bench/bare_engine.h"
#include "store/postgres_link.h"

namespace bench {
namespace {

class BareFile : public BareStore {
  public:
    explicit BareFile(std::unique_ptr<BareEngine> engine) : engine_(std::move(engine)) { engine_->UseOurLike(); }
    bool Step(const QString& sql) override { return engine_->Step(sql) >= 0; }

  private:
    std::unique_ptr<BareEngine> engine_;
};

class BareServer : public BareStore {
  public:
    explicit BareServer(std::unique_ptr<store::PostgresLink> link) : link_(std::move(link)) {}
    bool Step(const QString& sql) override {
        store::Fault fault;
        QSqlQuery query = link_->NewQuery();
        if (!store::PostgresLink::Start(query, sql, fault)) return false;
        for (const int width = query.record().count(); query.next();)
            for (int column = 0; column < width; ++column)
                query.value(column);
        return true;
    }

  private:
    std::unique_ptr<store::PostgresLink> link_;
};

}  // namespace

std::unique_ptr<BareStore> BareStore::Open(const QString& place) {
    if (!place.startsWith("Provider=")) {
        auto engine = BareEngine::Open(place, BareEngine::Use::Writing);
        return engine ? std::make_unique<BareFile>(std::move(engine)) : nullptr;
    }
    store::Fault fault;
    auto link = store::PostgresLink::Open(store::LoginOf(store::ConnectionString(place)), {}, fault);
    return link ? std::make_unique<BareServer>(std::move(link)) : nullptr;
}

}  // namespace bench
