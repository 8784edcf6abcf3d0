// The identity of a publisher: a user id and a user address.
#ifndef ORVO_COMMON_PUBLISHER_PRINCIPAL_IDENTITY_H_
#define ORVO_COMMON_PUBLISHER_PRINCIPAL_IDENTITY_H_

namespace orvo {
namespace common {

class PublisherPrincipalIdentity {
 public:
  PublisherPrincipalIdentity() : _userID(0), _userAddress(0) {}
  PublisherPrincipalIdentity(const PublisherPrincipalIdentity&) = default;
  PublisherPrincipalIdentity& operator=(const PublisherPrincipalIdentity&) = default;
  virtual ~PublisherPrincipalIdentity() = default;

  void clear() { _userID = _userAddress = 0; }
  unsigned int getUserID() const { return _userID; }
  void setUserID(unsigned int id) { _userID = id; }
  unsigned int getUserAddress() const { return _userAddress; }
  void setUserAddress(unsigned int address) { _userAddress = address; }

 private:
  unsigned int _userID;
  unsigned int _userAddress;
};

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_PUBLISHER_PRINCIPAL_IDENTITY_H_
